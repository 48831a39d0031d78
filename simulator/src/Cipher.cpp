#include "src/Cipher.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <climits>
#include <memory>
#include <stdexcept>

#include "src/Base64.h"

namespace nexwire::simulator {
namespace {

constexpr std::size_t kKeyBytes = 32;
constexpr std::size_t kNonceBytes = 12;
constexpr std::size_t kTagBytes = 16;

using Context = std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)>;

unsigned char* Bytes(std::string& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

const unsigned char* Bytes(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

void Need(bool ok)
{
    if (!ok) {
        throw std::runtime_error("the cipher failed");
    }
}

std::string Random(std::size_t size)
{
    std::string bytes(size, '\0');
    Need(RAND_bytes(Bytes(bytes), static_cast<int>(size)) == 1);
    return bytes;
}

} // namespace

Cipher::Cipher(const std::string& key)
{
    if (!FromBase64(key, key_) || key_.size() != kKeyBytes) {
        throw std::runtime_error("the cipher's key is damaged");
    }
}

std::string Cipher::NewKey()
{
    return ToBase64(Random(kKeyBytes));
}

std::string Cipher::Encrypt(std::string_view plaintext) const
{
    Need(plaintext.size() < INT_MAX / 2);
    const Context context(EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
    std::string sealed = Random(kNonceBytes);
    Need(context != nullptr && EVP_EncryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr,
                                                  Bytes(std::string_view(key_)), Bytes(sealed)) == 1);
    std::string body(plaintext.size(), '\0');
    std::string tag(kTagBytes, '\0');
    int size = 0;
    Need(EVP_EncryptUpdate(context.get(), Bytes(body), &size, Bytes(plaintext), static_cast<int>(plaintext.size())) ==
         1);
    Need(EVP_EncryptFinal_ex(context.get(), Bytes(tag), &size) == 1);
    Need(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, static_cast<int>(kTagBytes), tag.data()) == 1);
    return ToBase64(sealed + tag + body);
}

std::string Cipher::Decrypt(std::string_view ciphertext) const
{
    std::string sealed;
    if (!FromBase64(ciphertext, sealed) || sealed.size() < kNonceBytes + kTagBytes) {
        return {};
    }
    std::string tag = sealed.substr(kNonceBytes, kTagBytes);
    const std::string_view body = std::string_view(sealed).substr(kNonceBytes + kTagBytes);
    const Context context(EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
    Need(context != nullptr && EVP_DecryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr,
                                                  Bytes(std::string_view(key_)), Bytes(sealed)) == 1);
    std::string plaintext(body.size(), '\0');
    int size = 0;
    Need(EVP_DecryptUpdate(context.get(), Bytes(plaintext), &size, Bytes(body), static_cast<int>(body.size())) == 1);
    Need(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, static_cast<int>(kTagBytes), tag.data()) == 1);
    unsigned char rest[kTagBytes];
    return EVP_DecryptFinal_ex(context.get(), rest, &size) == 1 ? plaintext : std::string();
}

} // namespace nexwire::simulator
