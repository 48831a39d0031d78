#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace httpcore {

/// Gathers the body of an answer so that the process holds it about once, however it comes: a text that grows by
/// itself holds it up to three times while it moves. The members throw std::bad_alloc.
class BodyBuffer {
public:
    /// Starts anew; the bytes end up in `body`.
    void Begin(std::string& body);

    /// The answer declares its length. It is only a claim: memory for a long one is set aside when a part has come.
    void Declare(std::uint64_t length);

    void Append(const char* bytes, std::size_t size);

    /// Puts all bytes into the text given.
    void Finish();

    std::uint64_t Size() const { return size_; }

private:
    std::string* body_ = nullptr;
    std::uint64_t size_ = 0;
    std::uint64_t declared_ = 0;
    std::vector<std::string> blocks_; ///< What comes behind `*body_`.
};

} // namespace httpcore
