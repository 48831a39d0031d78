#include "HostTestKit.h"
#include "TlsServer.h"

namespace host_test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(ExecutorTls, CertificatesAreJudged)
{
    const Certificates& files = Certificates::Get();
    TlsServer server(files.server, files.serverKey, false);
    TlsServer elsewhere(files.elsewhere, files.elsewhereKey, false);
    TlsServer expired(files.expired, files.serverKey, false);
    TlsServer early(files.early, files.serverKey, false);
    TlsServer forClients(files.forClients, files.serverKey, false);
    TlsServer forLists(files.forLists, files.serverKey, false);
    TlsServer ofItself(files.ofItself, files.serverKey, false);
    TlsServer starred(files.starred, files.serverKey, false);
    TlsServer old(files.server, files.serverKey, false, true);
#ifdef _WIN32 // Wine's TLS ends the handshake by itself; Windows leaves such a key to the executor.
    const char* const otherKey = "127.0.0.1:";
#else
    const char* const otherKey = "made for another purpose than serving";
#endif
    struct Row {
        const char* what;
        std::string base;
        std::string caFile;
        bool verify;
        std::string failure; ///< Part of the text; empty when the call must work.
    };
    const Row rows[] = {
        {"trusted", server.Base(), files.authority, true, ""},
        {"unknown to the system", server.Base(), "", true, "not trusted"},
        {"signed by somebody else", server.Base(), files.stranger, true, "give the authority that signed it as caFile"},
        {"for another host", elsewhere.Base(), files.authority, true, "does not fit"},
        {"expired", expired.Base(), files.authority, true, "has expired"},
        {"not valid yet", early.Base(), files.authority, true, "is not valid yet"},
        {"for clients", forClients.Base(), files.authority, true, "made for another purpose than serving"},
        {"with a key for something else", forLists.Base(), files.authority, true, otherKey},
        {"signed by itself", ofItself.Base(), files.authority, true, "not trusted"},
        {"signed by itself and trusted", ofItself.Base(), files.ofItself, true, ""},
        {"a star for parts of an address", starred.Base(), files.starred, true, "does not fit"},
        {"TLS 1.1", old.Base(), files.authority, true, "no TLS with 127.0.0.1:"},
        {"not a certificate", server.Base(), files.serverKey, true, "caFile cannot be used"},
        {"anything goes", elsewhere.Base(), "", false, ""},
        {"plain HTTP to a TLS port", "http" + server.Base().substr(5), "", true, "HTTP/1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        HttpExecutorOptions options = At(row.base);
        options.caFile = row.caFile;
        options.verifyPeer = row.verify;
        HttpRequestExecutor executor(options);
        const Outcome outcome = Call(executor, Request(0, "/p"));
        if (row.failure.empty()) {
            ExpectAnswer(outcome, "secure");
        } else if (row.failure == "HTTP/1") {
            EXPECT_FALSE(outcome.answered);
        } else {
            ExpectFailure(outcome, HostError::TlsFailed, row.failure);
            ExpectFailure(Call(executor, Request(0, "/p")), HostError::TlsFailed, row.failure);
        }
    }
    EXPECT_EQ(server.Requests().size(), 1U) << "nothing was said to a server that was not trusted";
    EXPECT_EQ(elsewhere.Requests().size(), 1U);

    RawServer plain;
    plain.SetOnAccept(Reply().Send("HTTP/1.1 400 Bad Request\r\n\r\n").Close());
    HttpRequestExecutor executor(At("https://127.0.0.1:" + std::to_string(plain.Port())));
    ExpectFailure(Call(executor, Request(0, "/p")), HostError::TlsFailed, "no TLS with 127.0.0.1:");
}

TEST(ExecutorTls, ClientShowsItsCertificate)
{
    const Certificates& files = Certificates::Get();
    TlsServer server(files.server, files.serverKey, true);
    HttpExecutorOptions options = At(server.Base());
    options.caFile = files.authority;
    HttpRequestExecutor without(options);
    ExpectFailure(Call(without, Request(0, "/p")), HostError::TlsFailed, "certificate");

    options.clientCertificateFile = files.client;
    options.clientKeyFile = files.clientKey;
#ifdef _WIN32
    HttpRequestExecutor pem(options);
    ExpectFailure(Call(pem, Request(0, "/p")), HostError::BadOptions, "one PKCS#12 file as clientCertificateFile");
    options.clientCertificateFile = files.clientBundle;
    options.clientKeyFile.clear();
#endif
    options.clientKeyPassphrase = "geheim";
    HttpRequestExecutor wrong(options);
    const Outcome outcome = Call(wrong, Request(0, "/p"));
    ExpectFailure(outcome, HostError::TlsFailed, "client certificate or its key cannot be used");
    EXPECT_THAT(outcome.error.text, Not(HasSubstr("geheim")));
    EXPECT_EQ(server.Requests().size(), 0U);

    options.clientKeyPassphrase = Certificates::kPassphrase;
    HttpRequestExecutor right(options);
    ExpectAnswer(Call(right, Request(0, "/p")), "secure");
}

TEST(ExecutorTls, ConnectionIsKeptAndNothingIsRepeated)
{
    const Certificates& files = Certificates::Get();
    TlsServer server(files.server, files.serverKey, false);
    HttpExecutorOptions options = At(server.Base());
    options.caFile = files.authority;
    HttpRequestExecutor executor(options);
    for (int i = 0; i < 5; ++i) {
        ExpectAnswer(Call(executor, Request(0, "/p")), "secure");
    }
    EXPECT_EQ(server.Connections(), 1U);
    server.SetDefault(Reply().Close());
    ExpectFailure(Call(executor, Request(1, "/once")), HostError::NotRepeated);
    EXPECT_EQ(server.Requests().size(), 6U);
    EXPECT_EQ(server.Connections(), 1U);
}

// Anybody on the way can cut a TCP connection; only the server can send the closing alert.
TEST(ExecutorTls, OnlyTheClosingAlertEndsAnAnswerOfUndeclaredLength)
{
    const Certificates& files = Certificates::Get();
    TlsServer server(files.server, files.serverKey, false);
    HttpExecutorOptions options = At(server.Base());
    options.caFile = files.authority;
    HttpRequestExecutor executor(options);
    const std::string head = "HTTP/1.1 200 OK\r\n";
    server.Enqueue(Reply().Send(head + "\r\nabc").SignOff());
    ExpectAnswer(Call(executor, Request(0, "/p")), "abc");
    server.Enqueue(Reply().Send(head + "\r\nabc").Close());
    ExpectFailure(Call(executor, Request(0, "/p")), HostError::AnswerIncomplete);
    server.Enqueue(Reply().Send(head + "Content-Length: 3\r\n\r\nabc").Close());
    ExpectAnswer(Call(executor, Request(0, "/p")), "abc");
}

} // namespace
} // namespace host_test
