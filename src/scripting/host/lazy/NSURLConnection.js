(function (prelude) {
  'use strict';

  prelude.classNamed('NSHTTPURLResponse');
  class URLConnection {}
  return prelude.defineClass({
    name: 'NSURLConnection',
    implementation: URLConnection,
    initializers: {},
    classOperations: {
      'sendSynchronousRequest:returningResponse:error:'(request, response, error) {
        const answer = prelude.sendRequest(request);
        prelude.store(response, answer.response);
        prelude.store(error, answer.error);
        return answer.data;
      },
    },
  });
})
