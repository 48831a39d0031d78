#include "velaproto/RapidJsonProto.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "keel/StringUtil.h"

namespace proto {

namespace {

// The library writes through whatever its allocator returns, so an allocator must not return null.
class Allocator {
public:
    void* Malloc(std::size_t size) { return size == 0 ? nullptr : Checked(std::malloc(size)); }
    void* Realloc(void* block, std::size_t, std::size_t size)
    {
        if (size == 0) {
            std::free(block);
            return nullptr;
        }
        return Checked(std::realloc(block, size));
    }
    static void Free(void* block) { std::free(block); }

private:
    static void* Checked(void* block)
    {
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return block;
    }
};

using Keel::StringUtil::IsUtf8;
using Utf8 = rapidjson::UTF8<>;
using Pool = rapidjson::MemoryPoolAllocator<Allocator>;
using Document = rapidjson::GenericDocument<Utf8, Pool, Allocator>;
using Value = rapidjson::GenericValue<Utf8, Pool>;
using Pointer = rapidjson::GenericPointer<Value, Allocator>;
using Buffer = rapidjson::GenericStringBuffer<Utf8, Allocator>;
using Writer = rapidjson::Writer<Buffer, Utf8, Utf8, Allocator>;
using rapidjson::SizeType;

bool IsText(const std::string& text)
{
    return text.size() <= std::numeric_limits<SizeType>::max() && IsUtf8(text.data(), text.size());
}

// Hands the events of the parser on to the document and stops it where the document must not go.
class Gate {
public:
    Gate(Document& document, bool checked) : document_(document), checked_(checked) {}

    bool Null() { return document_.Null(); }
    bool Bool(bool value) { return document_.Bool(value); }
    // Numbers come as text: the library's own exact conversion stumbles over a mantissa of 0.
    bool RawNumber(const char* text, SizeType length, bool)
    {
        const char* const end = text + length;
        std::int64_t whole = 0;
        const auto asWhole = std::from_chars(text, end, whole);
        if (asWhole.ec == std::errc() && asWhole.ptr == end) {
            return document_.Int64(whole);
        }
        double real = 0;
        const auto asReal = std::from_chars(text, end, real);
        if (asReal.ec == std::errc::result_out_of_range) {
            // Too small is 0, too large is refused.
            const std::string_view number(text, length);
            const bool small = number.find("e-") != std::string_view::npos ||
                               number.find("E-") != std::string_view::npos || number.substr(0, 2) == "0." ||
                               number.substr(0, 3) == "-0.";
            return small && document_.Double(0.0);
        }
        return asReal.ec == std::errc() && asReal.ptr == end && document_.Double(real);
    }
    bool Int(int value) { return document_.Int(value); }
    bool Uint(unsigned value) { return document_.Uint(value); }
    bool Int64(std::int64_t value) { return document_.Int64(value); }
    bool Uint64(std::uint64_t value) { return document_.Uint64(value); }
    bool Double(double value) { return document_.Double(value); }
    // Only here a lone half of a surrogate pair shows, as the bytes it was decoded to.
    bool String(const char* text, SizeType length, bool copy)
    {
        return IsWhole(text, length) && document_.String(text, length, copy);
    }
    bool Key(const char* text, SizeType length, bool copy)
    {
        return IsWhole(text, length) && document_.Key(text, length, copy);
    }
    bool StartObject() { return Enter() && document_.StartObject(); }
    bool EndObject(SizeType count) { return Leave() && document_.EndObject(count); }
    bool StartArray() { return Enter() && document_.StartArray(); }
    bool EndArray(SizeType count) { return Leave() && document_.EndArray(count); }

private:
    bool IsWhole(const char* text, SizeType length) const { return !checked_ || IsUtf8(text, length); }
    bool Enter() { return ++depth_ <= CRapidJsonProto::kMaxDepth; }
    bool Leave()
    {
        --depth_;
        return true;
    }

    Document& document_;
    const bool checked_; ///< Whether texts are to be looked at.
    std::size_t depth_ = 0;
};

// Parses into a document, which keeps the text: strings stay where they stand. A generator in the library's sense.
class Parser {
public:
    explicit Parser(const std::string& text) : text_(text) {}

    bool operator()(Document& document)
    {
        const std::size_t start = text_.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
        const std::size_t length = text_.size() - start;
        auto* const copy = static_cast<char*>(document.GetAllocator().Malloc(length + 1));
        std::memcpy(copy, text_.c_str() + start, length + 1);
        rapidjson::GenericInsituStringStream<Utf8> in(copy);
        rapidjson::GenericReader<Utf8, Utf8, Allocator> reader;
        // Only escapes make anything else of the bytes that are there.
        Gate gate(document, text_.find("\\u") != std::string::npos);
        const unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
        // A NUL counts as the end of the text for the library.
        complete_ = IsUtf8(copy, length) && !reader.Parse<flags>(in, gate).IsError() && in.Tell() == length;
        return complete_;
    }

    bool Complete() const { return complete_; }

private:
    const std::string& text_;
    bool complete_ = false;
};

using Token = Pointer::Token;

// The parts of a path. Paths of everyday length without escapes are taken apart in place; the library's pointer, which
// allocates, does the rest.
class Path {
public:
    explicit Path(std::string_view path)
    {
        if (!TakeApart(path)) {
            const std::string whole = (path.empty() || path.front() == '/' ? "" : "/") + std::string(path);
            pointer_ = std::make_unique<Pointer>(whole.data(), whole.size());
            valid_ = pointer_->IsValid();
            count_ = pointer_->GetTokenCount();
        }
    }

    bool IsValid() const { return valid_; }
    std::size_t size() const { return count_; }
    const Token* begin() const { return pointer_ ? pointer_->GetTokens() : tokens_.data(); }
    const Token* end() const { return begin() + count_; }

private:
    bool TakeApart(std::string_view path)
    {
        if (path.find('~') != std::string::npos) {
            return false;
        }
        if (path.empty()) {
            return true;
        }
        std::size_t from = path.front() == '/' ? 1 : 0;
        for (;;) {
            if (count_ == tokens_.size()) {
                count_ = 0;
                return false;
            }
            const std::size_t slash = std::min(path.find('/', from), path.size());
            tokens_[count_++] = {path.data() + from, static_cast<SizeType>(slash - from),
                                 IndexIn(path.data() + from, slash - from)};
            if (slash == path.size()) {
                return true;
            }
            from = slash + 1;
        }
    }

    // Decimal without leading zeros, as the library reads it.
    static SizeType IndexIn(const char* text, std::size_t length)
    {
        if (length == 0 || length > 10 || (length > 1 && text[0] == '0')) {
            return rapidjson::kPointerInvalidIndex;
        }
        std::uint64_t index = 0;
        for (std::size_t i = 0; i < length; ++i) {
            if (text[i] < '0' || text[i] > '9') {
                return rapidjson::kPointerInvalidIndex;
            }
            index = index * 10 + static_cast<std::uint64_t>(text[i] - '0');
        }
        return index < rapidjson::kPointerInvalidIndex ? static_cast<SizeType>(index) : rapidjson::kPointerInvalidIndex;
    }

    std::array<Token, 8> tokens_;
    std::unique_ptr<Pointer> pointer_;
    std::size_t count_ = 0;
    bool valid_ = true;
};

Value Name(std::string_view key)
{
    return Value(rapidjson::StringRef(key.data(), static_cast<SizeType>(key.size())));
}

std::string_view KeyOf(const Token& token)
{
    return {token.name, token.length};
}

// What was set under a key with a NUL could not be found again.
bool IsStorable(std::string_view key)
{
    return IsUtf8(key.data(), key.size()) && key.find('\0') == std::string_view::npos;
}

bool IsAppend(const Token& token)
{
    return token.length == 1 && token.name[0] == '-';
}

// The index that the token means in an array of `size` elements; false when it means none that a setter may use.
bool IndexOf(const Token& token, SizeType size, SizeType& index)
{
    if (IsAppend(token)) {
        index = size;
        return true;
    }
    index = token.index;
    return index != rapidjson::kPointerInvalidIndex &&
           index <= static_cast<std::uint64_t>(size) + CRapidJsonProto::kMaxGap;
}

// Checks a setter's path before anything is changed.
bool CanCreate(const Value& root, const Path& path)
{
    if (!path.IsValid() || path.size() == 0 || path.size() >= CRapidJsonProto::kMaxDepth) {
        return false;
    }
    const Value* at = &root;
    for (const Token& token : path) {
        if (!IsStorable(KeyOf(token))) {
            return false;
        }
        const bool numbered = token.index != rapidjson::kPointerInvalidIndex;
        const Value* next = nullptr;
        if (at == nullptr || at->IsNull()) {
            if (numbered && token.index > CRapidJsonProto::kMaxGap) {
                return false;
            }
        } else if (at->IsArray()) {
            SizeType index = 0;
            if (!IndexOf(token, at->Size(), index)) {
                return false;
            }
            next = index < at->Size() ? &(*at)[index] : nullptr;
        } else if (at->IsObject()) {
            const auto member = at->FindMember(Name(KeyOf(token)));
            next = member != at->MemberEnd() ? &member->value : nullptr;
        } else {
            return false;
        }
        at = next;
    }
    return true;
}

// The library's own way to create a value reserves exactly one more element each time, which the pool never gives
// back: lists would cost the square of their length.
Value& Create(Value& root, const Path& path, Pool& pool)
{
    Value* at = &root;
    for (const Token& token : path) {
        if (at->IsNull()) {
            if (token.index != rapidjson::kPointerInvalidIndex) {
                at->SetArray();
            } else {
                at->SetObject();
            }
        }
        if (at->IsArray()) {
            SizeType index = 0;
            IndexOf(token, at->Size(), index);
            while (at->Size() <= index) {
                at->PushBack(Value(), pool);
            }
            at = &(*at)[index];
            continue;
        }
        const auto member = at->FindMember(Name(KeyOf(token)));
        if (member != at->MemberEnd()) {
            at = &member->value;
        } else {
            at->AddMember(Value(token.name, token.length, pool), Value(), pool);
            at = &(at->MemberEnd() - 1)->value;
        }
    }
    return *at;
}

// An integer when the number has no fraction and fits into 64 bits.
bool Whole(const Value& value, std::int64_t& whole)
{
    if (value.IsInt64()) {
        whole = value.GetInt64();
        return true;
    }
    const double limit = 9223372036854775808.0;
    if (!value.IsDouble() || value.GetDouble() < -limit || value.GetDouble() >= limit ||
        std::trunc(value.GetDouble()) != value.GetDouble()) {
        return false;
    }
    whole = static_cast<std::int64_t>(value.GetDouble());
    return true;
}

} // namespace

struct CRapidJsonProto::Impl {
    Document document{rapidjson::kObjectType};

    const Value* Find(std::string_view path) const
    {
        if (path.empty()) {
            return &document;
        }
        const auto [place, name] = Split(path);
        const Value* const at = PlaceAt(place);
        if (at == nullptr) {
            return nullptr;
        }
        std::string_view key;
        if (at->IsObject() && IsKey(name, key)) {
            const auto member = at->FindMember(Name(key));
            return member != at->MemberEnd() ? &member->value : nullptr;
        }
        return Walk(*at, Path(name));
    }

    bool Store(std::string_view path, Value& value)
    {
        // Where keys are set one after the other their path is looked for once. Longer ones may be too deep.
        if (!path.empty() && path.size() < kMaxDepth) {
            const auto [place, name] = Split(path);
            Value* const at = const_cast<Value*>(PlaceAt(place));
            std::string_view key;
            if (at != nullptr && at->IsObject() && IsKey(name, key)) {
                return IsStorable(key) && Put(*at, key, value);
            }
            if (at != nullptr && (at->IsObject() || at->IsArray())) {
                return StoreIn(*at, Path(name), value);
            }
        }
        place_ = nullptr;
        return StoreIn(document, Path(path), value);
    }

    template <class Number>
    bool StoreNumber(std::string_view path, Number number)
    {
        Value value(number);
        return Store(path, value);
    }

private:
    /// A path up to its last part, and that.
    static std::pair<std::string_view, std::string_view> Split(std::string_view path)
    {
        const std::size_t slash = path.rfind('/');
        return slash == std::string_view::npos ? std::pair(std::string_view(), path)
                                               : std::pair(path.substr(0, slash), path.substr(slash));
    }

    /// Whether the last part of a path stands there as the key that it means.
    static bool IsKey(std::string_view name, std::string_view& key)
    {
        key = name.substr(!name.empty() && name.front() == '/' ? 1 : 0);
        return key.find('~') == std::string_view::npos;
    }

    bool Put(Value& object, std::string_view key, Value& value)
    {
        const auto member = object.FindMember(Name(key));
        if (member != object.MemberEnd()) {
            member->value = value;
        } else {
            Pool& pool = document.GetAllocator();
            object.AddMember(Value(key.data(), static_cast<SizeType>(key.size()), pool), value, pool);
        }
        return true;
    }

    static const Value* Walk(const Value& from, const Path& path)
    {
        const Value* at = path.IsValid() ? &from : nullptr;
        for (const Token& token : path) {
            if (at == nullptr) {
                break;
            }
            if (at->IsArray()) {
                at = token.index < at->Size() ? &(*at)[token.index] : nullptr;
            } else if (at->IsObject()) {
                const auto member = at->FindMember(Name(KeyOf(token)));
                at = member != at->MemberEnd() ? &member->value : nullptr;
            } else {
                at = nullptr;
            }
        }
        return at;
    }

    /// The value at a path; the last one is kept. What is set below it leaves it where it is, and what is set elsewhere
    /// replaces it.
    const Value* PlaceAt(std::string_view path) const
    {
        if (place_ == nullptr || path != placePath_) {
            place_ = nullptr;
            placePath_ = path;
            place_ = Walk(document, Path(path));
        }
        return place_;
    }

    bool StoreIn(Value& root, const Path& path, Value& value)
    {
        if (!CanCreate(root, path)) {
            return false;
        }
        Create(root, path, document.GetAllocator()) = value;
        return true;
    }

    mutable const Value* place_ = nullptr;
    mutable std::string placePath_;
};

CRapidJsonProto::CRapidJsonProto() : impl_(std::make_unique<Impl>()) {}

CRapidJsonProto::~CRapidJsonProto() = default;

bool CRapidJsonProto::Load(const std::string& text)
{
    try {
        auto loaded = std::make_unique<Impl>();
        Parser parser(text);
        loaded->document.Populate(parser);
        if (!parser.Complete()) {
            return false;
        }
        impl_ = std::move(loaded);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

std::string CRapidJsonProto::ToString() const
{
    Buffer buffer;
    Writer writer(buffer);
    impl_->document.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

bool CRapidJsonProto::Set(const std::string& path, const std::string& value)
{
    if (!IsText(value)) {
        return false;
    }
    Value text(value.data(), static_cast<SizeType>(value.size()), impl_->document.GetAllocator());
    return impl_->Store(path, text);
}

bool CRapidJsonProto::Set(const std::string& path, const char* value)
{
    return value != nullptr && Set(path, std::string(value));
}

bool CRapidJsonProto::Set(const std::string& path, std::int32_t value)
{
    return impl_->StoreNumber(path, value);
}

bool CRapidJsonProto::Set(const std::string& path, std::int64_t value)
{
    return impl_->StoreNumber(path, value);
}

bool CRapidJsonProto::Set(const std::string& path, double value)
{
    return std::isfinite(value) && impl_->StoreNumber(path, value);
}

bool CRapidJsonProto::Set(const std::string& path, bool value)
{
    return impl_->StoreNumber(path, value);
}

bool CRapidJsonProto::SetArray(const std::string& path)
{
    Value array(rapidjson::kArrayType);
    return impl_->Store(path, array);
}

bool CRapidJsonProto::Get(const std::string& path, std::string& value) const
{
    const Value* const found = impl_->Find(path);
    if (found == nullptr || !found->IsString()) {
        return false;
    }
    value.assign(found->GetString(), found->GetStringLength());
    return true;
}

bool CRapidJsonProto::Get(const std::string& path, std::int32_t& value) const
{
    std::int64_t wide = 0;
    if (!Get(path, wide) || wide < std::numeric_limits<std::int32_t>::min() ||
        wide > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    value = static_cast<std::int32_t>(wide);
    return true;
}

bool CRapidJsonProto::Get(const std::string& path, std::int64_t& value) const
{
    const Value* const found = impl_->Find(path);
    return found != nullptr && Whole(*found, value);
}

bool CRapidJsonProto::Get(const std::string& path, double& value) const
{
    const Value* const found = impl_->Find(path);
    if (found == nullptr || !found->IsNumber()) {
        return false;
    }
    value = found->GetDouble();
    return true;
}

bool CRapidJsonProto::Get(const std::string& path, bool& value) const
{
    const Value* const found = impl_->Find(path);
    if (found == nullptr || !found->IsBool()) {
        return false;
    }
    value = found->GetBool();
    return true;
}

bool CRapidJsonProto::Has(const std::string& path) const
{
    return impl_->Find(path) != nullptr;
}

std::size_t CRapidJsonProto::ArraySize(const std::string& path) const
{
    const Value* const found = impl_->Find(path);
    return found != nullptr && found->IsArray() ? found->Size() : 0;
}

} // namespace proto
