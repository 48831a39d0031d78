#include "TlsServer.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/asio/write.hpp>

#include <openssl/ecdsa.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/pkcs12.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include "loopback/Transport.h"

namespace host_test {

namespace asio = boost::asio;
namespace fs = std::filesystem;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

void Need(bool good, const char* what)
{
    if (!good) {
        throw std::runtime_error(what);
    }
}

Key MakeKey()
{
    Key key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
    Need(key != nullptr, "key");
    return key;
}

void Extend(X509* certificate, X509* issuer, int id, const std::string& value)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, &context, id, value.c_str());
    Need(extension != nullptr && X509_add_ext(certificate, extension, -1) == 1, "extension");
    X509_EXTENSION_free(extension);
}

// Whether neither number of a signature begins with a zero byte: one in a hundred does, and Wine 8 refuses it.
bool HasLongNumbers(const X509& certificate)
{
    const ASN1_BIT_STRING* bits = nullptr;
    X509_get0_signature(&bits, nullptr, &certificate);
    const unsigned char* at = bits->data;
    const std::unique_ptr<ECDSA_SIG, decltype(&ECDSA_SIG_free)> signature(d2i_ECDSA_SIG(nullptr, &at, bits->length),
                                                                          &ECDSA_SIG_free);
    Need(signature != nullptr, "numbers of a signature");
    return BN_num_bytes(ECDSA_SIG_get0_r(signature.get())) == 32 &&
           BN_num_bytes(ECDSA_SIG_get0_s(signature.get())) == 32;
}

// Without an issuer it signs itself and is an authority.
Certificate MakeCertificate(const std::string& name, const std::string& subject, EVP_PKEY* key, X509* issuer,
                            EVP_PKEY* issuerKey, long startsInHours = -1, const char* purpose = nullptr,
                            const char* keyUsage = nullptr)
{
    Certificate made(X509_new(), &X509_free);
    static long serial = 1;
    X509_set_version(made.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), serial++);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), startsInHours * 3600);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), startsInHours * 3600 + 7200);
    X509_set_pubkey(made.get(), key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(made.get()), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
    X509* const signer = issuer != nullptr ? issuer : made.get();
    X509_set_issuer_name(made.get(), X509_get_subject_name(signer));
    Extend(made.get(), signer, NID_basic_constraints, issuer != nullptr ? "CA:FALSE" : "critical,CA:TRUE");
    if (!subject.empty()) {
        Extend(made.get(), signer, NID_subject_alt_name, subject);
    }
    if (purpose != nullptr) {
        Extend(made.get(), signer, NID_ext_key_usage, purpose);
    }
    if (keyUsage != nullptr) {
        Extend(made.get(), signer, NID_key_usage, keyUsage);
    }
    do {
        Need(X509_sign(made.get(), issuerKey, EVP_sha256()) > 0, "signature");
    } while (!HasLongNumbers(*made));
    return made;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

std::string Write(const std::string& folder, const char* name, X509* certificate)
{
    const std::string path = folder + "/" + name;
    const File file(std::fopen(path.c_str(), "wb"));
    Need(file && PEM_write_X509(file.get(), certificate) == 1, "certificate file");
    return path;
}

std::string Write(const std::string& folder, const char* name, EVP_PKEY* key, const char* passphrase = nullptr)
{
    const std::string path = folder + "/" + name;
    const File file(std::fopen(path.c_str(), "wb"));
    const EVP_CIPHER* const cipher = passphrase != nullptr ? EVP_aes_128_cbc() : nullptr;
    Need(file && PEM_write_PKCS8PrivateKey(file.get(), key, cipher, passphrase,
                                           passphrase != nullptr ? static_cast<int>(std::string(passphrase).size()) : 0,
                                           nullptr, nullptr) == 1,
         "key file");
    return path;
}

Certificates MakeAll()
{
    std::uint32_t number = 0;
    RAND_bytes(reinterpret_cast<unsigned char*>(&number), sizeof number);
    Certificates all;
    all.folder = (fs::temp_directory_path() / ("nexwire-tls-" + std::to_string(number))).string();
    fs::create_directories(all.folder);
    const Key authorityKey = MakeKey();
    const Certificate authority =
        MakeCertificate("Test authority", "", authorityKey.get(), nullptr, authorityKey.get());
    all.authority = Write(all.folder, "authority.pem", authority.get());
    const Key strangerKey = MakeKey();
    const Certificate stranger = MakeCertificate("Stranger", "", strangerKey.get(), nullptr, strangerKey.get());
    all.stranger = Write(all.folder, "stranger.pem", stranger.get());

    const auto issue = [&](const char* name, const char* subject, EVP_PKEY* key) {
        return MakeCertificate(name, subject, key, authority.get(), authorityKey.get());
    };
    const Key serverKey = MakeKey();
    all.server = Write(all.folder, "server.pem", issue("server", "IP:127.0.0.1", serverKey.get()).get());
    all.serverKey = Write(all.folder, "server.key", serverKey.get());
    const auto faulty = [&](const char* file, long startsInHours, const char* purpose = nullptr,
                            const char* keyUsage = nullptr) {
        return Write(all.folder, file,
                     MakeCertificate("faulty", "IP:127.0.0.1", serverKey.get(), authority.get(), authorityKey.get(),
                                     startsInHours, purpose, keyUsage)
                         .get());
    };
    all.expired = faulty("expired.pem", -10);
    all.early = faulty("early.pem", 10);
    all.forClients = faulty("clients.pem", -1, "clientAuth");
    all.forLists = faulty("lists.pem", -1, nullptr, "critical,cRLSign");
    const auto itself = [&](const char* file, const char* name, const char* subject) {
        return Write(all.folder, file, MakeCertificate(name, subject, serverKey.get(), nullptr, serverKey.get()).get());
    };
    all.ofItself = itself("itself.pem", "127.0.0.1", "IP:127.0.0.1");
    all.starred = itself("starred.pem", "*.0.0.1", "");
    const Key otherKey = MakeKey();
    all.elsewhere = Write(all.folder, "other.pem", issue("other", "DNS:elsewhere.example", otherKey.get()).get());
    all.elsewhereKey = Write(all.folder, "other.key", otherKey.get());
    const Key clientKey = MakeKey();
    const Certificate client = issue("client", "", clientKey.get());
    all.client = Write(all.folder, "client.pem", client.get());
    all.clientBundle = all.folder + "/client.p12";
    const std::unique_ptr<PKCS12, decltype(&PKCS12_free)> bundle(
        PKCS12_create(Certificates::kPassphrase, "client", clientKey.get(), client.get(), nullptr, 0, 0, 0, 0, 0),
        &PKCS12_free);
    const File file(std::fopen(all.clientBundle.c_str(), "wb"));
    Need(bundle && file && i2d_PKCS12_fp(file.get(), bundle.get()) == 1, "bundle");
    all.clientKey = Write(all.folder, "client.key", clientKey.get(), Certificates::kPassphrase);
    return all;
}

} // namespace

const Certificates& Certificates::Get()
{
    struct Owner {
        Certificates all = MakeAll();
        ~Owner()
        {
            std::error_code ignored;
            fs::remove_all(all.folder, ignored);
        }
    };
    static const Owner owner;
    return owner.all;
}

namespace {

class TlsStream : public nexwire::loopback::Stream {
public:
    TlsStream(tcp::socket socket, asio::ssl::context& context) : stream_(std::move(socket), context) {}

    tcp::socket& Socket() override { return stream_.next_layer(); }
    void Open(Done done) override
    {
        stream_.async_handshake(asio::ssl::stream_base::server, [done](const error_code& error) { done(error, 0); });
    }
    void ReadSome(asio::mutable_buffer buffer, Done done) override
    {
        stream_.async_read_some(asio::mutable_buffers_1(buffer), std::move(done));
    }
    void Write(asio::const_buffer bytes, Done done) override
    {
        asio::async_write(stream_, asio::const_buffers_1(bytes), std::move(done));
    }
    void SignOff(Done done) override
    {
        stream_.async_shutdown([done](const error_code& error) { done(error, 0); });
    }

private:
    asio::ssl::stream<tcp::socket> stream_;
};

class TlsTransport : public nexwire::loopback::Transport {
public:
    TlsTransport(const std::string& certificate, const std::string& key, bool askForClient, bool old)
    {
        if (old) {
            SSL_CTX* const native = context_.native_handle();
            Need(SSL_CTX_set_min_proto_version(native, TLS1_VERSION) == 1 &&
                     SSL_CTX_set_max_proto_version(native, TLS1_1_VERSION) == 1 &&
                     SSL_CTX_set_cipher_list(native, "DEFAULT:@SECLEVEL=0") == 1,
                 "old TLS");
        }
        context_.use_certificate_chain_file(certificate);
        context_.use_private_key_file(key, asio::ssl::context::pem);
        if (askForClient) {
            context_.load_verify_file(Certificates::Get().authority);
            context_.set_verify_mode(asio::ssl::verify_peer | asio::ssl::verify_fail_if_no_peer_cert);
        }
    }

    const char* Scheme() const override { return "https"; }
    std::unique_ptr<nexwire::loopback::Stream> Wrap(tcp::socket socket) override
    {
        return std::make_unique<TlsStream>(std::move(socket), context_);
    }

private:
    asio::ssl::context context_{asio::ssl::context::tls_server};
};

} // namespace

TlsServer::TlsServer(const std::string& certificate, const std::string& key, bool askForClient, bool old)
    : RawServer(std::make_shared<TlsTransport>(certificate, key, askForClient, old))
{
    SetDefault(nexwire::loopback::Reply::Http(200, "secure"));
}

} // namespace host_test
