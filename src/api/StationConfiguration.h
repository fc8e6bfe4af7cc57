#pragma once

#include <QString>

namespace orvel {

// What one deployment of the client talks to and names as its contacts.
struct StationConfiguration
{
    QString siteUrl; // of the station, without a slash at the end
    QString networkWebradioUrl;
    // HMAC keys are never sent; public keys go into each request.
    QString stationSigningKey;
    QString stationPublicKey;
    QString networkSigningKey;
    QString networkPublicKey;

    QString telephone;
    QString smsShortCode;
    QString contactMail;
    QString facebookPage;
    QString twitterPage;
    QString googlePage;
    QString instagramPage;

    // Returns what this program was built with.
    static StationConfiguration compiledIn();

    // Returns the one in use: the compiled-in one, until use() is called at the start. Main thread.
    static const StationConfiguration &current();
    static void use(const StationConfiguration &configuration);
};

} // namespace orvel
