#include <gtest/gtest.h>

#include "Application/Framework/DefaultEncryption.h"
#include "nexwire/Framework/Encryption.h"
#include "nexwire/Log/Log.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

using nexwire::CDefaultComponentEncryption;

TEST(Encryption, AsksThePlatformAndTrustsTheAnswersOrder)
{
    test::Library library;
    CDefaultComponentEncryption encryption;
    std::vector<std::string> texts = {"stale"};
    library.wire.AnswerWith(
        R"({"code":"0-0","data":{"ciphertextList":[{"plaintext":"b","ciphertext":"B"},{"ciphertext":"A"}]}})");
    ASSERT_TRUE(encryption.Encrypt(texts, {"a", "b", "c"}, "session"));
    EXPECT_EQ(texts, (std::vector<std::string>{"B", "A"}));
    const nexwire::RequestParams& request = library.wire.Last();
    EXPECT_EQ(request.url, "/7730/v1/internal/framework/encryption");
    EXPECT_EQ(request.method, 1);
    EXPECT_EQ(request.headers, (std::map<std::string, std::string>{{"SID", "session"}}));
    EXPECT_EQ(request.body, "{\n\t\"encryptionInfo\":\t{\n\t\t\"plaintextList\":\t[\"a\", \"b\", \"c\"]\n\t}\n}");

    library.wire.AnswerWith(R"({"data":{"plaintextList":[{"plaintext":"a"}]}})");
    ASSERT_TRUE(encryption.Decrypt(texts, {}, ""));
    EXPECT_EQ(texts, (std::vector<std::string>{"a"}));
    EXPECT_EQ(library.wire.Last().url, "/7730/v1/internal/framework/decryption");
    EXPECT_EQ(library.wire.Last().body, "{\n\t\"decryptionInfo\":\t{\n\t\t\"ciphertextList\":\t[]\n\t}\n}");
    EXPECT_TRUE(library.wire.Last().headers.empty());
}

TEST(Encryption, FailureIsLoggedOnceWithTheLastErrorAndLeavesNothing)
{
    const test::LogCapture log;
    CDefaultComponentEncryption encryption;
    std::vector<std::string> texts = {"stale"};
    {
        test::Library library;
        library.wire.Fail();
        EXPECT_FALSE(encryption.Encrypt(texts, {"a"}, ""));
        EXPECT_TRUE(texts.empty());
        EXPECT_EQ(log.Count("Failed to CEncryptionComm::request. [error-7-28]"), 1u);
        library.wire.Fail();
        EXPECT_FALSE(encryption.Decrypt(texts, {"a"}, ""));
        EXPECT_EQ(log.Count("Failed to CDecryptionComm::request. [error-7-28]"), 1u);
    }
    Keel::Error::SetLastError({3, 4, ""});
    EXPECT_FALSE(encryption.Encrypt(texts, {"a"}, ""));
    EXPECT_EQ(log.Count("Failed to CEncryptionComm::request. [error-3-4]"), 1u);
}

TEST(Encryption, LogTextsThatCannotBeDecryptedComeBackAsTheyAre)
{
    test::Library library;
    library.wire.AnswerWith(R"({"data":{"plaintextList":[{"plaintext":"clear"},{"plaintext":"x"}]}})");
    EXPECT_EQ(nexwire::CSearchFilterLogsComm::decryption("cipher"), "clear");
    for (const char* body :
         {"broken", "{}", R"({"data":{"plaintextList":[]}})", R"({"data":{"plaintextList":[{"plaintext":""}]}})"}) {
        library.wire.AnswerWith(body);
        EXPECT_EQ(nexwire::CSearchFilterLogsComm::decryption("cipher"), "cipher") << body;
    }
}

} // namespace
