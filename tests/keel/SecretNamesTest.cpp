#include <sstream>

#include <gtest/gtest.h>

#include <keel/Redact.h>

namespace {

// Written by hand beside the list that the program has: a name that gets lost there lets a secret out.
constexpr char kNames[] = R"(
    password passwd pwd passphrase passcode userPassword userPwd loginPassword loginPwd adminPassword oldPassword oldPwd
    originalPassword currentPassword newPassword newPwd confirmPassword confirmPwd repeatPassword initPassword
    initialPassword defaultPassword resetPassword verifyPassword checkPassword accessPassword authPassword privPassword
    devicePassword devicePwd devPassword devPwd channelPassword serverPassword streamPassword streamPwd videoPassword
    rtspPassword superPassword superPwd stressPassword stressPwd duressPassword hijackPassword coercePassword
    unlockPassword unlockPwd doorPassword openPassword openDoorPassword openDoorPwd keyboardPassword keypadPassword
    personPassword personPwd cardPassword cardPwd visitorPassword dynamicPassword temporaryPassword tempPassword
    installerPassword operatorPassword ftpPassword ftpPwd mailPassword emailPassword smtpPassword proxyPassword
    snmpPassword ldapPassword dbPassword databasePassword wifiPassword wifiPwd platformPassword encryptPassword
    encryptionPassword filePassword exportPassword sipPassword intercomPassword pin pinCode personPin verifyCode
    verificationCode authCode authenticationCode captcha smsCode otp token accessToken loginToken refreshToken authToken
    userToken sessionToken serverToken clientToken csrfToken apiToken bearerToken idToken SID session sessionId
    sessionKey authorization proxyAuthorization cookie setCookie credential cardNo cardNum cardNumber cardNumbers cardId
    cardCode cardSerial cardSerialNo cardSerialNumber physicalCardNo wiegandCardNo bankCardNo streamKey secret secretKey
    encryptKey encryptionKey decryptKey decryptionKey aesKey desKey rsaKey privateKey sharedKey preSharedKey psk
    masterKey symmetricKey signKey signatureKey hmacKey userKey deviceKey corvidKey generalCorvidKey apiKey appKey
    appSecret clientSecret accessKey accessKeySecret secretAccessKey authKey videoKey verificationKey wifiKey salt
    apnPassword sectorKey newSectorKey plaintext fingerData fingerprintData fingerPrintFeature fingerFeature faceData
    faceFeature irisData irisFeature palmData palmFeature biometricData featureData eigenvalue)";

TEST(Redact, EveryNameOfASecretIsKnown)
{
    const Keel::CRedactor redactor;
    std::istringstream names(kNames);
    for (std::string name; names >> name;) {
        EXPECT_EQ(redactor.Redact("{\"" + name + "\":\"hunter2\"}"), "{\"" + name + "\":\"***\"}");
    }
}

} // namespace
