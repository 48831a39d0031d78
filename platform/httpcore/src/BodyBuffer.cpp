#include "httpcore/BodyBuffer.h"

#include <algorithm>

namespace httpcore {

namespace {

/// Of a declared length, before anything came. Ranges of files, 10 MiB, fit without a second block.
constexpr std::uint64_t kBelieved = std::uint64_t{12} << 20;
constexpr std::size_t kBlock = std::size_t{1} << 20;
/// Allocators give a block of this size back to the system at once, so that it does not count beside the joined text.
constexpr std::size_t kLargeBlock = std::size_t{33} << 20;

} // namespace

void BodyBuffer::Begin(std::string& body)
{
    body_ = &body;
    body_->clear();
    size_ = 0;
    declared_ = 0;
    blocks_.clear();
}

void BodyBuffer::Declare(std::uint64_t length)
{
    declared_ = length;
    body_->reserve(static_cast<std::size_t>(std::min(length, kBelieved)));
}

void BodyBuffer::Append(const char* bytes, std::size_t size)
{
    size_ += size;
    if (size_ <= declared_) {
        if (size_ > body_->capacity()) {
            body_->reserve(static_cast<std::size_t>(declared_));
        }
        body_->append(bytes, size);
        return;
    }
    if (blocks_.empty() && size_ <= kBlock) {
        body_->append(bytes, size);
        return;
    }
    while (size > 0) {
        if (blocks_.empty() || blocks_.back().size() == blocks_.back().capacity()) {
            std::string block;
            block.reserve(size_ < kLargeBlock ? kBlock : kLargeBlock);
            blocks_.push_back(std::move(block));
        }
        std::string& last = blocks_.back();
        const std::size_t fits = std::min(size, last.capacity() - last.size());
        last.append(bytes, fits);
        bytes += fits;
        size -= fits;
    }
}

void BodyBuffer::Finish()
{
    if (blocks_.empty()) {
        return;
    }
    body_->reserve(static_cast<std::size_t>(size_));
    for (std::string& block : blocks_) {
        body_->append(block);
        std::string().swap(block);
    }
    blocks_.clear();
}

} // namespace httpcore
