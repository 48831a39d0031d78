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
    m_body = &body;
    m_body->clear();
    m_size = 0;
    m_declared = 0;
    m_blocks.clear();
}

void BodyBuffer::Declare(std::uint64_t length)
{
    m_declared = length;
    m_body->reserve(static_cast<std::size_t>(std::min(length, kBelieved)));
}

void BodyBuffer::Append(const char* bytes, std::size_t size)
{
    m_size += size;
    if (m_size <= m_declared) {
        if (m_size > m_body->capacity()) {
            m_body->reserve(static_cast<std::size_t>(m_declared));
        }
        m_body->append(bytes, size);
        return;
    }
    if (m_blocks.empty() && m_size <= kBlock) {
        m_body->append(bytes, size);
        return;
    }
    while (size > 0) {
        if (m_blocks.empty() || m_blocks.back().size() == m_blocks.back().capacity()) {
            std::string block;
            block.reserve(m_size < kLargeBlock ? kBlock : kLargeBlock);
            m_blocks.push_back(std::move(block));
        }
        std::string& last = m_blocks.back();
        const std::size_t fits = std::min(size, last.capacity() - last.size());
        last.append(bytes, fits);
        bytes += fits;
        size -= fits;
    }
}

void BodyBuffer::Finish()
{
    if (m_blocks.empty()) {
        return;
    }
    m_body->reserve(static_cast<std::size_t>(m_size));
    for (std::string& block : m_blocks) {
        m_body->append(block);
        std::string().swap(block);
    }
    m_blocks.clear();
}

} // namespace httpcore
