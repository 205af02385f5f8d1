// Base64 of strings and bytes, also in the form for URLs.
(function (prelude) {
  'use strict';

  const bytesOf = text => MF_Base64Codec.dataFromBase64String_(text);
  const standard = text => MF_Base64Codec.base64StringFromBase64UrlEncodedString_(text);
  const stringOf = text => {
    try {
      return decodeURIComponent(
          Array.from(bytesOf(text), byte => `%${byte.toString(16).padStart(2, '0')}`).join(''));
    } catch {
      return null;  // It is not UTF-8.
    }
  };

  const forUrls = {
    base64UrlEncodedString() {
      return MF_Base64Codec.base64UrlEncodedStringFromBase64String_(this.base64String());
    },
  };
  prelude.add(String.prototype, forUrls);
  prelude.add(Uint8Array.prototype, forUrls);
  prelude.addOperations(NSString, {
    'stringFromBase64String:': text => stringOf(text),
    'stringFromBase64UrlEncodedString:': text => stringOf(standard(text)),
  });
  prelude.addOperations(NSData, {
    'dataWithBase64String:': text => bytesOf(text),
    'dataWithBase64UrlEncodedString:': text => bytesOf(standard(text)),
  });
})
