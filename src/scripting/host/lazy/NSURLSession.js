// Requests that are sent after the script's own turn, one after the other.
(function (prelude) {
  'use strict';

  prelude.classNamed('NSHTTPURLResponse');
  class URLSessionDataTask {
    constructor(request, done) { Object.assign(this, {request, done, timer: null}); }
    start() {
      this.timer ??= setTimeout(() => {
        const {data, response, error} = prelude.sendRequest(this.request);
        this.done?.(data, response, error);
      }, 0);
    }
  }
  class URLSession {}
  const shared = new URLSession();
  prelude.defineClass({
    name: 'NSURLSessionDataTask',
    implementation: URLSessionDataTask,
    initializers: {},
    operations: {
      'resume'() { this.start(); },
      'cancel'() { clearTimeout(this.timer); },
    },
  });
  const task = (request, done, selector) => new URLSessionDataTask(
      request, prelude.isNull(done) ? null : prelude.takeFunction(done, selector));
  return prelude.defineClass({
    name: 'NSURLSession',
    implementation: URLSession,
    initializers: {},
    classOperations: {'sharedSession': () => shared},
    operations: {
      'dataTaskWithRequest:completionHandler:': (request, done) =>
          task(request, done, 'dataTaskWithRequest:completionHandler:'),
      'dataTaskWithURL:completionHandler:': (url, done) => task(
          globalThis.NSURLRequest.requestWithURL_(url), done, 'dataTaskWithURL:completionHandler:'),
    },
  });
})
