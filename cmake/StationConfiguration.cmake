# The compiled-in station: everything a deployment changes. The defaults are placeholders of the right form.
set(ORVEL_SITE_URL "http://www.orvel.example" CACHE STRING "Station site base URL, without a trailing slash")
set(ORVEL_NETWORK_WEBRADIO_URL "http://www.tarvane.example/api/webradio" CACHE STRING "Network web-radio API URL")
set(ORVEL_STATION_SIGNING_KEY "6ca155e4d87cd7d7748e77781aec2153e41fed3e892cc0d3e93d6dc7f96928b9" CACHE STRING
  "HMAC key of the station API (never sent)")
set(ORVEL_STATION_PUBLIC_KEY "20ce0870e92e76eb60ed8ac6d3dd1231090e5fc41b61f7509e6883fd324a6bc8" CACHE STRING
  "Public key of the station API")
set(ORVEL_NETWORK_SIGNING_KEY "d02852f69ce3cc6cdc47e2d27f0f91085d95c3c35a3e9c7467da41ebef4eaf3c" CACHE STRING
  "HMAC key of the network web-radio API (never sent)")
set(ORVEL_NETWORK_PUBLIC_KEY "7cb902d53c983f774bf68730c09f435cf82798ba8b90c8f9d03951e848646bef" CACHE STRING
  "Public key of the network web-radio API")
set(ORVEL_TELEPHONE "+33100000000" CACHE STRING "Contact telephone number")
set(ORVEL_SMS_SHORT_CODE "70000" CACHE STRING "SMS short code of the studio")
set(ORVEL_CONTACT_MAIL "contact@orvel.example" CACHE STRING "Contact mail address")
set(ORVEL_FACEBOOK_PAGE "http://www.facebook.example/orvelradio" CACHE STRING "The station's Facebook page")
set(ORVEL_TWITTER_PAGE "http://www.twitter.example/orvelradio" CACHE STRING "The station's Twitter page")
set(ORVEL_GOOGLE_PAGE "http://plus.google.example/orvelradio/videos" CACHE STRING "The station's Google+ videos page")
set(ORVEL_INSTAGRAM_PAGE "http://www.instagram.example/orvelradio" CACHE STRING "The station's Instagram page")
