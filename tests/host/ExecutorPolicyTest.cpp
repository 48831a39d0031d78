// What the executor asks of the libraries below it, where an ordinary server would not show the difference.

#include <dlfcn.h>
#include <thread>

#include <openssl/ssl.h>

#include "HostTestKit.h"
#include "TlsServer.h"

namespace {

int g_directories = 0;    ///< Folders of authorities that were loaded.
long g_oldestVersion = 0; ///< Set on the last TLS context that got one.

template <class Function>
Function* Real(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// These stand before the libraries' own, which they call.
extern "C" __attribute__((visibility("default"))) int X509_STORE_load_path(X509_STORE* store, const char* path)
{
    ++g_directories;
    return Real<int(X509_STORE*, const char*)>("X509_STORE_load_path")(store, path);
}

extern "C" __attribute__((visibility("default"))) long SSL_CTX_ctrl(SSL_CTX* context, int command, long number,
                                                                    void* pointer)
{
    if (command == SSL_CTRL_SET_MIN_PROTO_VERSION) {
        g_oldestVersion = number;
    }
    return Real<long(SSL_CTX*, int, long, void*)>("SSL_CTX_ctrl")(context, command, number, pointer);
}

namespace host_test {
namespace {

TEST(ExecutorPolicy, TlsIsAtLeast12AndACaFileStandsAlone)
{
    const Certificates& files = Certificates::Get();
    TlsServer server(files.server, files.serverKey, false);
    HttpExecutorOptions options = At(server.Base());
    g_oldestVersion = g_directories = 0;
    HttpRequestExecutor anybody(options);
    EXPECT_FALSE(Call(anybody, Request(0, "/p")).answered);
    EXPECT_EQ(g_oldestVersion, TLS1_2_VERSION);
    const int usual = g_directories;

    g_oldestVersion = g_directories = 0;
    options.caFile = files.authority;
    HttpRequestExecutor ours(options);
    ExpectAnswer(Call(ours, Request(0, "/p")), "secure");
    EXPECT_EQ(g_oldestVersion, TLS1_2_VERSION);
    EXPECT_EQ(g_directories, 0) << "the system's authorities are trusted beside the file";
    EXPECT_GT(usual, 0) << "or else nothing was seen";
}

TEST(ExecutorPolicy, AConnectionThatWasIdleTooLongIsNotUsed)
{
    RawServer server;
    HttpExecutorOptions options = At(server.Base());
    options.maxIdleSeconds = 1;
    HttpRequestExecutor executor(options);
    ExpectAnswer(Call(executor, Request(0, "/p")), "{}");
    ExpectAnswer(Call(executor, Request(0, "/p")), "{}");
    EXPECT_EQ(server.Connections(), 1U);
    std::this_thread::sleep_for(2100ms);
    ExpectAnswer(Call(executor, Request(0, "/p")), "{}");
    EXPECT_EQ(server.Connections(), 2U);
}

TEST(ExecutorPolicy, FieldsOfTheTransportAreRefused)
{
    RawServer server;
    HttpRequestExecutor executor(At(server.Base()));
    for (const char* name : {"Host", "Content-Length", "Transfer-Encoding", "connection", "Expect", "TE", "Trailer",
                             "Upgrade", "Proxy-Connection"}) {
        RequestParams request = Request(1, "/p", "{}");
        request.headers[name] = "close";
        ExpectFailure(Call(executor, request), HostError::RequestRefused, name);
    }
    EXPECT_EQ(server.Connections(), 0U);
}

} // namespace
} // namespace host_test
