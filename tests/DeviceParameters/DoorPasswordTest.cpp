#include <stdexcept>

#include "nexwire/DeviceParameters/AcsParam.h"
#include "support/DeviceAnswer.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;
using Texts = std::vector<std::string>;

/// What the encryption of the running test was asked, and how it answers.
struct Cipher {
    enum class Mood { Works, Fails, FailsWithOutput, ReturnsTwo, ReturnsFour, ReturnsNone, Throws };
    Mood mood = Mood::Works;
    std::vector<Texts> encrypted;
    std::vector<Texts> decrypted;
    std::string sid = "unset";
};

class StubEncryption : public IEncryption {
public:
    explicit StubEncryption(Cipher& cipher) : cipher_(cipher) {}

    bool Encrypt(Texts& ciphertexts, const Texts& plaintexts, const std::string& sid) override
    {
        cipher_.encrypted.push_back(plaintexts);
        return Convert(ciphertexts, plaintexts, sid, "enc:");
    }
    bool Decrypt(Texts& plaintexts, const Texts& ciphertexts, const std::string& sid) override
    {
        cipher_.decrypted.push_back(ciphertexts);
        return Convert(plaintexts, ciphertexts, sid, "dec:");
    }

private:
    bool Convert(Texts& output, const Texts& input, const std::string& sid, const char* mark)
    {
        cipher_.sid = sid;
        output.clear();
        for (const std::string& text : input) {
            output.push_back(mark + text);
        }
        switch (cipher_.mood) {
        case Cipher::Mood::Works:
            break;
        case Cipher::Mood::Fails:
            output.clear();
            return false;
        case Cipher::Mood::FailsWithOutput:
            return false;
        case Cipher::Mood::ReturnsTwo:
            output.pop_back();
            break;
        case Cipher::Mood::ReturnsFour:
            output.push_back("more");
            break;
        case Cipher::Mood::ReturnsNone:
            output.clear();
            break;
        case Cipher::Mood::Throws:
            throw std::runtime_error("host's fault");
        }
        return true;
    }

    Cipher& cipher_;
};

const std::vector<Cipher::Mood> kFailures = {Cipher::Mood::Fails,       Cipher::Mood::FailsWithOutput,
                                             Cipher::Mood::ReturnsTwo,  Cipher::Mood::ReturnsFour,
                                             Cipher::Mood::ReturnsNone, Cipher::Mood::Throws};

class DoorPassword : public testing::Test {
protected:
    /// The door that was sent last.
    protocol::AcsDoorParamCfg SentDoor()
    {
        protocol::DagPassThroughReq request;
        protocol::AcsDoorParamCfg door;
        EXPECT_TRUE(protocol::TParseJSONStr(request, library.wire.Last().body));
        EXPECT_EQ(request.command, 4102);
        EXPECT_TRUE(protocol::TParseJSONStr(door, request.inBuffer));
        return door;
    }

    static Texts Passwords(const protocol::AcsDoorParamCfg& door)
    {
        return {door.stressPassword, door.superPassword, door.unlockPassword};
    }

    static protocol::AcsDoorParamCfg Door()
    {
        protocol::AcsDoorParamCfg door;
        door.doorName = "north";
        door.stressPassword = "1111";
        door.superPassword = "2222";
        return door;
    }

    Cipher cipher;
    test::LogCapture log{false};
    test::Library library{new StubEncryption(cipher)};
    const std::string answer = test::DeviceAnswer(
        R"({"acsDoorParamCfg":{"doorName":"south","unlockPassword":"c","stressPassword":"a","superPassword":"b"}})");
};

TEST_F(DoorPassword, TravelEncryptedTogetherAndComeBackDecrypted)
{
    EXPECT_TRUE(AcsParamConfig::setAcsDoorParamRequest(Door(), "d", 1));
    EXPECT_EQ(cipher.encrypted, std::vector<Texts>({{"1111", "2222", ""}}));
    EXPECT_EQ(cipher.sid, "");
    EXPECT_EQ(Passwords(SentDoor()), Texts({"enc:1111", "enc:2222", "enc:"}));
    EXPECT_EQ(SentDoor().doorName, "north");
    EXPECT_EQ(library.wire.Last().body.find("\"1111\""), std::string::npos);

    cipher.sid = "unset";
    library.wire.otherwise = answer;
    protocol::AcsDoorParamCfg door;
    EXPECT_TRUE(AcsParamConfig::getAcsDoorParamRequest(door, "d", 1));
    EXPECT_EQ(cipher.decrypted, std::vector<Texts>({{"a", "b", "c"}}));
    EXPECT_EQ(cipher.sid, "");
    EXPECT_EQ(Passwords(door), Texts({"dec:a", "dec:b", "dec:c"}));
    EXPECT_EQ(door.doorName, "south");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(DoorPassword, FailedEncryptionSendsTheDoorWithoutThem)
{
    std::size_t failures = 0;
    for (const Cipher::Mood mood : kFailures) {
        cipher.mood = mood;
        EXPECT_TRUE(AcsParamConfig::setAcsDoorParamRequest(Door(), "d", 1));
        EXPECT_EQ(Passwords(SentDoor()), Texts(3));
        EXPECT_EQ(SentDoor().doorName, "north");
        EXPECT_EQ(log.Count("AESEncryption failed!"), ++failures);
    }
    EXPECT_EQ(log.Count("ERROR"), failures);
    EXPECT_EQ(log.Count("AccessControllerComm"), failures);
    EXPECT_EQ(log.Count("1111"), 0U);
}

TEST_F(DoorPassword, FailedDecryptionClearsThem)
{
    library.wire.otherwise = answer;
    std::size_t failures = 0;
    for (const Cipher::Mood mood : kFailures) {
        cipher.mood = mood;
        protocol::AcsDoorParamCfg door = Door();
        EXPECT_TRUE(AcsParamConfig::getAcsDoorParamRequest(door, "d", 1));
        EXPECT_EQ(Passwords(door), Texts(3));
        EXPECT_EQ(door.doorName, "south");
        EXPECT_EQ(log.Count("AESDecryption failed!"), ++failures);
    }
    EXPECT_EQ(log.Count("ERROR"), failures);
    EXPECT_EQ(log.Count("AccessControllerComm"), failures);
}

TEST_F(DoorPassword, AreNotDecryptedWhenThereIsNoDoor)
{
    for (const std::string& body : {test::DeviceAnswer(""), test::DeviceAnswer("{}"), std::string("broken")}) {
        library.wire.otherwise = body;
        protocol::AcsDoorParamCfg door = Door();
        EXPECT_FALSE(AcsParamConfig::getAcsDoorParamRequest(door, "d", 1));
        EXPECT_EQ(Passwords(door), Passwords(Door()));
        EXPECT_EQ(door.doorName, "north");
    }
    EXPECT_TRUE(cipher.decrypted.empty());
}

TEST(DoorPasswordWithoutEncryption, CountsAsFailure)
{
    test::LogCapture log;
    // Before start-up there is neither an encryption object nor an executor.
    protocol::AcsDoorParamCfg door;
    door.doorName = "before";
    EXPECT_FALSE(AcsParamConfig::setAcsDoorParamRequest(door, "d", 1));
    EXPECT_FALSE(AcsParamConfig::getAcsDoorParamRequest(door, "d", 1));
    EXPECT_EQ(door.doorName, "before");
    EXPECT_EQ(log.Count("AESEncryption failed!"), 1U);
    EXPECT_EQ(log.Count("AESDecryption failed!"), 0U);
}

} // namespace
