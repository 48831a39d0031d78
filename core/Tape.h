#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/Arena.h"

struct cJSON;

namespace nexwire::core {

/// One value of a document that was read: a container stands before the values in it. Texts lie in the document, or in
/// the arena if they had escapes.
class TapeEntry {
public:
    enum class What : std::uint8_t {
        Null,
        False,
        True,
        Number,
        Text,
        Array,
        Object,
        KeyedObject, ///< Before each of its members stands the key, a Text.
        Tree,        ///< A value that cJSON read.
        Jump,        ///< The tape goes on elsewhere.
    };

    What what() const { return static_cast<What>(head_ & 0xFF); }
    /// Of a member: which of those that were wanted.
    std::size_t index() const { return static_cast<std::size_t>(head_ >> kIndexShift & 0xFF); }
    /// Of a container: how many values stand in it.
    std::size_t size() const { return static_cast<std::size_t>(head_ >> kSizeShift); }
    double number() const { return number_; }
    /// The nearest whole number that there is room for.
    std::int32_t integer() const
    {
        if (number_ >= INT32_MAX) {
            return INT32_MAX;
        }
        return number_ <= INT32_MIN ? INT32_MIN : static_cast<std::int32_t>(number_);
    }
    /// Empty for whatever is no text.
    std::string_view text() const
    {
        return what() == What::Text ? std::string_view(text_, size()) : std::string_view();
    }
    const cJSON* tree() const { return tree_; }
    const TapeEntry* next() const { return next_; }

    void Begin(What what, std::size_t index)
    {
        head_ = static_cast<std::uint64_t>(what) | static_cast<std::uint64_t>(index) << kIndexShift;
    }
    void SetSize(std::size_t size) { head_ |= static_cast<std::uint64_t>(size) << kSizeShift; }
    void SetNumber(double number) { number_ = number; }
    void SetText(std::string_view text)
    {
        text_ = text.data();
        SetSize(text.size());
    }
    void SetTree(const cJSON* tree) { tree_ = tree; }
    void SetNext(const TapeEntry* next) { next_ = next; }

private:
    static constexpr int kIndexShift = 8;
    static constexpr int kSizeShift = 16;

    std::uint64_t head_;
    union {
        double number_;
        const char* text_;
        const cJSON* tree_;
        const TapeEntry* next_;
    };
};

/// Writes entries, in blocks of the arena. What they take counts towards the answer that is read.
class Tape {
public:
    explicit Tape(Arena& arena) : arena_(arena) {}

    /// @throws std::bad_alloc, AnswerTooCostly
    TapeEntry& Add(TapeEntry::What what, std::size_t index)
    {
        if (next_ == last_) {
            Grow();
        }
        next_->Begin(what, index);
        return *next_++;
    }

    /// Null before anything was added.
    const TapeEntry* First() const { return first_; }

private:
    void Grow();

    Arena& arena_;
    const TapeEntry* first_ = nullptr;
    TapeEntry* next_ = nullptr;
    TapeEntry* last_ = nullptr; ///< Kept for the jump to the next block.
    std::size_t block_ = 16;
};

/// Goes through a tape from one value to the next.
class TapeCursor {
public:
    TapeCursor(Arena& arena, const TapeEntry* first) : arena_(arena), next_(first) {}

    const TapeEntry& Next()
    {
        if (next_->what() == TapeEntry::What::Jump) {
            next_ = next_->next();
        }
        return *next_++;
    }

    /// The value `entry`, which is the last that came, as a tree; it lives as long as the tape.
    /// @throws std::bad_alloc, AnswerTooCostly
    const cJSON* Tree(const TapeEntry& entry)
    {
        return entry.what() == TapeEntry::What::Tree ? entry.tree() : Node(entry);
    }

private:
    cJSON* Node(const TapeEntry& entry);
    char* Copy(std::string_view text);

    Arena& arena_;
    const TapeEntry* next_;
};

} // namespace nexwire::core
