(function (prelude) {
  'use strict';

  class HTTPURLResponse {
    constructor(url, status) { Object.assign(this, {address: url, status}); }
  }
  // What both ways of sending a request give: the bytes, the response and the error.
  prelude.sendRequest = request => {
    const {status, body, message} = prelude.native.sendRequest(request);
    if (message !== undefined) {
      const error = prelude.newError('NSURLErrorDomain', -1, {NSLocalizedDescription: message});
      return {data: null, response: null, error};
    }
    const response = new HTTPURLResponse(request.URL(), status);
    return {data: body ?? new Uint8Array(0), response, error: null};
  };
  return prelude.defineClass({
    name: 'NSHTTPURLResponse',
    implementation: HTTPURLResponse,
    initializers: {},
    operations: {
      'statusCode'() { return this.status; },
      'URL'() { return this.address; },
    },
  });
})
