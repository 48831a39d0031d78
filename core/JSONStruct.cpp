#include "nexwire/JSONStruct.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "core/AnswerBudget.h"
#include "core/FieldLayout.h"
#include "core/JsonTree.h"

namespace nexwire::core {

/// The interpreter's way to what was found.
struct StructAccess : protocol::IJSONStruct {
    static void Clear(protocol::IJSONStruct& object) { (object.*(&StructAccess::ClearPresent))(); }
    static bool Test(const protocol::IJSONStruct& object, std::size_t index)
    {
        return ((object.*(&StructAccess::present_))[index / 64] >> (index % 64) & 1U) != 0;
    }
    static void Set(protocol::IJSONStruct& object, std::size_t index)
    {
        (object.*(&StructAccess::present_))[index / 64] |= std::uint64_t{1} << (index % 64);
    }
    static const std::unordered_set<std::string>* Noted(const protocol::IJSONStruct& object)
    {
        return (object.*(&StructAccess::noted_)).get();
    }
    static void Move(protocol::IJSONStruct& to, protocol::IJSONStruct& from)
    {
        constexpr auto present = &StructAccess::present_;
        (to.*present)[0] = (from.*present)[0];
        (to.*present)[1] = (from.*present)[1];
        (to.*(&StructAccess::noted_)) = std::move(from.*(&StructAccess::noted_));
    }

protected:
    ~StructAccess() = default;
};

namespace {

using What = TapeEntry::What;
using protocol::IJSONStruct;
using protocol::SerializationIgnoreItemFeatures;

template <class T>
T& At(void* base, const Field& field)
{
    return *reinterpret_cast<T*>(static_cast<char*>(base) + field.offset);
}

template <class T>
const T& At(const void* base, const Field& field)
{
    return *reinterpret_cast<const T*>(static_cast<const char*>(base) + field.offset);
}

std::int64_t ToInt64(double value)
{
    // 2^63 as a double; what lies outside ends at the nearest end of the range.
    constexpr double kLimit = 9223372036854775808.0;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kLimit) {
        return INT64_MAX;
    }
    return value < -kLimit ? INT64_MIN : static_cast<std::int64_t>(value);
}

void ClearLists(void* base, const FieldTable& table)
{
    for (const Field& field : table) {
        switch (field.kind) {
        case Kind::TextList:
            At<std::vector<std::string>>(base, field).clear();
            break;
        case Kind::IntList:
            At<std::vector<std::int32_t>>(base, field).clear();
            break;
        case Kind::StructList:
            field.List().Renew(&At<char>(base, field), 0);
            break;
        default:
            break;
        }
    }
}

/// Whether a structure may hold anything of before.
enum class Before { Something, Nothing };

void Read(IJSONStruct& object, const FieldTable& table, const TapeEntry& value, TapeCursor& tape, Before before);

void ReadStruct(void* memory, const StructOps& ops, const TapeEntry& value, TapeCursor& tape, Before before)
{
    IJSONStruct& structure = *StructOps::AsStruct(memory);
    if (ops.fields == nullptr) {
        const cJSON* const node = tape.Tree(value);
        if (cJSON_IsObject(node) != 0) {
            structure.Parse(node);
        }
    } else if (value.what() == What::Object) {
        Read(structure, *ops.fields, value, tape, before);
    }
}

/// The elements of an array, once it is known that the answer may cost so many bytes for each.
template <class List, class Element>
void ReadList(List& list, const TapeEntry& array, std::size_t elementBytes, TapeCursor& tape, const Element& element)
{
    ChargeAnswer(std::uint64_t{array.size()} * elementBytes);
    list.reserve(array.size());
    for (std::size_t i = 0; i < array.size(); ++i) {
        list.emplace_back(element(tape.Next()));
    }
}

void TakeText(std::string& member, std::string_view text)
{
    if (text.size() <= member.capacity()) {
        member.assign(text.data(), text.size());
    } else {
        // Growing would keep what is overwritten.
        member = std::string(text);
    }
}

void ReadField(void* base, const Field& field, const TapeEntry& value, TapeCursor& tape, Before before)
{
    switch (field.kind) {
    case Kind::Text:
        TakeText(At<std::string>(base, field), value.text());
        break;
    case Kind::Int:
        if (value.what() == What::Number) {
            At<std::int32_t>(base, field) = value.integer();
        }
        break;
    case Kind::Int64:
        if (value.what() == What::Number) {
            At<std::int64_t>(base, field) = ToInt64(value.number());
        }
        break;
    case Kind::Real:
        if (value.what() == What::Number) {
            At<double>(base, field) = value.number();
        }
        break;
    case Kind::Bool:
        if (value.what() == What::True || value.what() == What::False) {
            At<bool>(base, field) = value.what() == What::True;
        }
        break;
    case Kind::Struct:
        ReadStruct(&At<char>(base, field), *field.ops, value, tape, before);
        break;
    case Kind::TextList:
        if (value.what() == What::Array) {
            ReadList(At<std::vector<std::string>>(base, field), value, sizeof(std::string), tape,
                     [](const TapeEntry& entry) { return entry.text(); });
        }
        break;
    case Kind::IntList:
        if (value.what() == What::Array) {
            ReadList(At<std::vector<std::int32_t>>(base, field), value, sizeof(std::int32_t), tape,
                     [](const TapeEntry& entry) { return entry.what() == What::Number ? entry.integer() : 0; });
        }
        break;
    case Kind::StructList:
        if (value.what() == What::Array) {
            const ListOps& ops = field.List();
            ChargeAnswer(std::uint64_t{value.size()} * ops.size);
            void* const first = ops.Renew(&At<char>(base, field), value.size());
            for (std::size_t i = 0; i < value.size(); ++i) {
                ReadStruct(ops.Element(first, i), ops, tape.Next(), tape, Before::Nothing);
            }
        }
        break;
    }
}

/// Nothing is read of what is no object.
void Read(IJSONStruct& object, const FieldTable& table, const TapeEntry& value, TapeCursor& tape, Before before)
{
    if (before == Before::Something) {
        StructAccess::Clear(object);
        ClearLists(&object, table);
    }
    if (value.what() != What::Object) {
        return;
    }
    for (std::size_t i = 0; i < value.size(); ++i) {
        const TapeEntry& member = tape.Next();
        StructAccess::Set(object, member.index());
        const Field& field = table.fields[member.index()];
        // Most are texts, which need not go through the choice of kinds.
        if (field.kind == Kind::Text) {
            TakeText(At<std::string>(&object, field), member.text());
        } else {
            ReadField(&object, field, member, tape, before);
        }
    }
}

void ParseByTable(IJSONStruct& object, const FieldTable& table, const cJSON* node)
{
    if (node != nullptr) {
        ArenaScope scope;
        TapeCursor tape = scope.Read(*node, Wanted(Wanted::Of::Fields, &table));
        Read(object, table, tape.Next(), tape, Before::Something);
    }
}

const SerializationIgnoreItemFeatures& FilterOf(const IJSONStruct& object, bool inbound)
{
    if (inbound) {
        return static_cast<const protocol::IInboundData&>(object);
    }
    return static_cast<const protocol::IReturnData&>(object);
}

/// Makes trees that belong to whoever asked for them. What is null says that memory ran out.
class OwnNodes {
public:
    using Tree = JsonTree;

    static cJSON* Container(int type) { return type == cJSON_Array ? cJSON_CreateArray() : cJSON_CreateObject(); }
    static cJSON* Text(const std::string& text) { return cJSON_CreateString(text.c_str()); }
    static cJSON* Number(double value) { return cJSON_CreateNumber(value); }
    static cJSON* Raw(const std::string& text) { return cJSON_CreateRaw(text.c_str()); }
    static cJSON* Bool(bool value) { return cJSON_CreateBool(value ? 1 : 0); }
    static cJSON* Of(const IJSONStruct& structure, const StructOps&) { return structure.ToJson(); }
    /// The keys are literals of this library and outlive every tree.
    static bool Add(JsonTree& parent, const char* key, cJSON* item)
    {
        const bool added = item != nullptr && (key != nullptr ? cJSON_AddItemToObjectCS(parent.get(), key, item)
                                                              : cJSON_AddItemToArray(parent.get(), item)) != 0;
        if (!added) {
            cJSON_Delete(item);
        }
        return added;
    }
};

template <class Nodes>
cJSON* MakeObject(Nodes& nodes, const IJSONStruct& structure, const FieldTable& table);

/// Makes trees that only this library sees: nodes in the arena, keys and texts where the structure has them. Throws
/// when memory runs out.
class PassingNodes {
public:
    class Tree {
    public:
        explicit Tree(cJSON* root) : root_(root) {}
        cJSON* get() const { return root_; }
        cJSON* Release() const { return root_; }
        void Add(cJSON* item)
        {
            (last_ != nullptr ? last_->next : root_->child) = item;
            last_ = item;
        }

    private:
        cJSON* root_;
        cJSON* last_ = nullptr;
    };

    explicit PassingNodes(ConversionScope& scope) : scope_(scope) {}

    cJSON* Container(int type) { return New(type); }
    cJSON* Text(const std::string& text)
    {
        cJSON* const node = New(cJSON_String);
        node->valuestring = const_cast<char*>(text.c_str());
        return node;
    }
    cJSON* Number(double value)
    {
        cJSON* const node = New(cJSON_Number);
        node->valuedouble = value;
        return node;
    }
    cJSON* Raw(const std::string& text)
    {
        cJSON* const node = New(cJSON_Raw);
        auto* const copy = static_cast<char*>(scope_.Allocate(text.size() + 1));
        std::memcpy(copy, text.c_str(), text.size() + 1);
        node->valuestring = copy;
        return node;
    }
    cJSON* Bool(bool value) { return New(value ? cJSON_True : cJSON_False); }
    cJSON* Of(const IJSONStruct& structure, const StructOps& ops)
    {
        return ops.fields != nullptr ? MakeObject(*this, structure, *ops.fields) : Foreign(structure);
    }
    static bool Add(Tree& parent, const char* key, cJSON* item)
    {
        if (item == nullptr) {
            return false;
        }
        item->string = const_cast<char*>(key);
        parent.Add(item);
        return true;
    }

    /// Of a structure that says itself what it looks like.
    cJSON* Foreign(const IJSONStruct& structure)
    {
        JsonTree& made = scope_.Adopt();
        made.Reset(structure.ToJson());
        if (made.get() == nullptr) {
            return nullptr;
        }
        cJSON* const node = New(cJSON_NULL);
        *node = *made.get();
        return node;
    }

private:
    cJSON* New(int type)
    {
        auto* const node = static_cast<cJSON*>(scope_.Allocate(sizeof(cJSON)));
        *node = cJSON();
        node->type = type;
        return node;
    }

    ConversionScope& scope_;
};

template <class Nodes, class Look>
cJSON* MakeArray(Nodes& nodes, std::size_t count, const Look& look)
{
    typename Nodes::Tree array(nodes.Container(cJSON_Array));
    for (std::size_t i = 0; i < count; ++i) {
        if (!nodes.Add(array, nullptr, look(i))) {
            return nullptr;
        }
    }
    return array.Release();
}

template <class Nodes>
cJSON* MakeInt64(Nodes& nodes, std::int64_t value)
{
    // cJSON prints numbers with 15 digits; larger ones go in as text.
    constexpr std::int64_t kPrintedExactly = 999999999999999;
    if (value >= -kPrintedExactly && value <= kPrintedExactly) {
        return nodes.Number(static_cast<double>(value));
    }
    return nodes.Raw(std::to_string(value));
}

template <class Nodes>
cJSON* MakeItem(Nodes& nodes, const void* base, const Field& field)
{
    switch (field.kind) {
    case Kind::Text:
        return nodes.Text(At<std::string>(base, field));
    case Kind::Int:
        return nodes.Number(At<std::int32_t>(base, field));
    case Kind::Int64:
        return MakeInt64(nodes, At<std::int64_t>(base, field));
    case Kind::Real:
        return nodes.Number(At<double>(base, field));
    case Kind::Bool:
        return nodes.Bool(At<bool>(base, field));
    case Kind::Struct:
        return nodes.Of(*StructOps::AsStruct(const_cast<char*>(&At<char>(base, field))), *field.ops);
    case Kind::TextList: {
        const auto& list = At<std::vector<std::string>>(base, field);
        return MakeArray(nodes, list.size(), [&](std::size_t i) { return nodes.Text(list[i]); });
    }
    case Kind::IntList: {
        const auto& list = At<std::vector<std::int32_t>>(base, field);
        return MakeArray(nodes, list.size(), [&](std::size_t i) { return nodes.Number(list[i]); });
    }
    case Kind::StructList: {
        const ListOps& ops = field.List();
        std::size_t count = 0;
        void* const first = ops.Look(&At<char>(base, field), count);
        return MakeArray(nodes, count, [&](std::size_t i) { return nodes.Of(*ops.Element(first, i), ops); });
    }
    }
    return nullptr;
}

template <class Nodes>
cJSON* MakeObject(Nodes& nodes, const IJSONStruct& structure, const FieldTable& table)
{
    const SerializationIgnoreItemFeatures& filter = FilterOf(structure, table.ops.inbound);
    const bool all = filter.FilterMode() == SerializationIgnoreItemFeatures::kLeaveOut && filter.FilterKeys().empty();
    typename Nodes::Tree object(nodes.Container(cJSON_Object));
    if (object.get() == nullptr) {
        return nullptr;
    }
    for (const Field& field : table) {
        if ((all || !filter.IsLeftOut(field.key)) &&
            !nodes.Add(object, field.key, MakeItem(nodes, &structure, field))) {
            return nullptr;
        }
    }
    return object.Release();
}

cJSON* Write(const IJSONStruct& structure, const FieldTable& table)
{
    OwnNodes nodes;
    return MakeObject(nodes, structure, table);
}

std::unordered_set<std::string> PresentKeys(const IJSONStruct& object, const FieldTable& table)
{
    std::unordered_set<std::string> keys;
    if (const auto* const noted = StructAccess::Noted(object)) {
        keys = *noted;
    }
    for (std::size_t i = 0; i < table.count; ++i) {
        if (StructAccess::Test(object, i)) {
            keys.insert(table.fields[i].key);
        }
    }
    return keys;
}

bool IsPresent(const IJSONStruct& object, const FieldTable& table, std::string_view key)
{
    for (std::size_t i = 0; i < table.count; ++i) {
        if (key == table.fields[i].key) {
            return StructAccess::Test(object, i);
        }
    }
    const auto* const noted = StructAccess::Noted(object);
    return noted != nullptr && noted->count(std::string(key)) != 0;
}

void MoveField(void* to, void* from, const Field& field)
{
    switch (field.kind) {
    case Kind::Text:
        At<std::string>(to, field) = std::move(At<std::string>(from, field));
        break;
    case Kind::TextList:
        At<std::vector<std::string>>(to, field) = std::move(At<std::vector<std::string>>(from, field));
        break;
    case Kind::IntList:
        At<std::vector<std::int32_t>>(to, field) = std::move(At<std::vector<std::int32_t>>(from, field));
        break;
    case Kind::StructList:
        field.List().Swap(&At<char>(to, field), &At<char>(from, field));
        break;
    case Kind::Struct:
        if (field.ops->fields == nullptr) {
            field.ops->work(Work::Move, &At<char>(to, field), &At<char>(from, field));
        } else {
            MoveByTable(*StructOps::AsStruct(&At<char>(to, field)), *StructOps::AsStruct(&At<char>(from, field)),
                        *field.ops->fields);
        }
        break;
    default:
        std::memcpy(&At<char>(to, field), &At<char>(from, field), field.size);
        break;
    }
}

/// The table of structures that a host brings.
constexpr FieldTable kNoFields = {"", "", nullptr, 0, {}};
constexpr FieldTable kNoFieldsSent = {"", "", nullptr, 0, {nullptr, nullptr, 0, true, nullptr}};

} // namespace

void MoveByTable(IJSONStruct& to, IJSONStruct& from, const FieldTable& fields)
{
    StructAccess::Move(to, from);
    const auto filter = [&](const IJSONStruct& object) -> SerializationIgnoreItemFeatures& {
        return const_cast<SerializationIgnoreItemFeatures&>(FilterOf(object, fields.ops.inbound));
    };
    filter(to) = std::move(filter(from));
    for (const Field& field : fields) {
        MoveField(&to, &from, field);
    }
}

const cJSON* ConversionScope::Write(const IJSONStruct& structure, const FieldTable* table, const char* root)
{
    PassingNodes nodes(*this);
    cJSON* const value = table != nullptr ? MakeObject(nodes, structure, *table) : nodes.Foreign(structure);
    if (root == nullptr || value == nullptr) {
        return value;
    }
    cJSON* const object = nodes.Container(cJSON_Object);
    object->child = value;
    value->string = const_cast<char*>(root);
    return object;
}

void HeldValue::Parse(const cJSON* node)
{
    text_ = PrintFormatted(node);
}

cJSON* HeldValue::ToJson() const
{
    return nullptr;
}

bool HeldValue::HandTo(IJSONStruct& structure) const
{
    if (text_.empty()) {
        return true;
    }
    ConversionScope scope;
    const char* position = nullptr;
    std::optional<TapeCursor> tape = scope.Parse(text_, position);
    if (!tape) {
        return false;
    }
    structure.Parse(tape->Tree(tape->Next()));
    return true;
}

const FieldTable* TableOf(const IJSONStruct& structure)
{
    const FieldTable* fields = nullptr;
    if (const auto* const result = dynamic_cast<const protocol::IReturnData*>(&structure)) {
        fields = &result->Fields();
    } else if (const auto* const request = dynamic_cast<const protocol::IInboundData*>(&structure)) {
        fields = &request->Fields();
    }
    return fields != nullptr && IsOfTable(structure, *fields) ? fields : nullptr;
}

Wanted WantedBy(const IJSONStruct& structure)
{
    const FieldTable* const fields = TableOf(structure);
    return fields != nullptr ? Wanted(Wanted::Of::Fields, fields) : kEverything;
}

void Hand(IJSONStruct& structure, Wanted wanted, const TapeEntry& value, TapeCursor& tape)
{
    if (wanted.table() != nullptr) {
        Read(structure, *wanted.table(), value, tape, Before::Something);
    } else {
        structure.Parse(tape.Tree(value));
    }
}

} // namespace nexwire::core

namespace protocol {

namespace core = nexwire::core;

IJSONStruct::IJSONStruct(const IJSONStruct& other)
    : present_{other.present_[0], other.present_[1]},
      noted_(other.noted_ ? std::make_unique<std::unordered_set<std::string>>(*other.noted_) : nullptr)
{
}

IJSONStruct& IJSONStruct::operator=(const IJSONStruct& other)
{
    if (this != &other) {
        noted_ = other.noted_ ? std::make_unique<std::unordered_set<std::string>>(*other.noted_) : nullptr;
        present_[0] = other.present_[0];
        present_[1] = other.present_[1];
    }
    return *this;
}

void IJSONStruct::NotePresent(std::string_view key)
{
    if (!noted_) {
        noted_ = std::make_unique<std::unordered_set<std::string>>();
    }
    noted_->emplace(key);
}

void IJSONStruct::ClearPresent()
{
    present_[0] = present_[1] = 0;
    noted_.reset();
}

void SerializationIgnoreItemFeatures::SetFilter(std::int32_t mode, std::vector<std::string> keys)
{
    mode_ = mode;
    keys_ = std::move(keys);
}

void SerializationIgnoreItemFeatures::WriteOnly(std::vector<std::string> keys)
{
    SetFilter(kOnly, std::move(keys));
}

void SerializationIgnoreItemFeatures::LeaveOut(std::vector<std::string> keys)
{
    SetFilter(kLeaveOut, std::move(keys));
}

bool SerializationIgnoreItemFeatures::IsLeftOut(std::string_view key) const
{
    if (key.empty() || (mode_ != kLeaveOut && mode_ != kOnly)) {
        return false;
    }
    const bool listed = std::find(keys_.begin(), keys_.end(), key) != keys_.end();
    return listed == (mode_ == kLeaveOut);
}

// The tables' offsets count from the start of the whole structure, where its one base stands.

void IInboundData::Parse(const cJSON* node)
{
    core::ParseByTable(*this, Fields(), node);
}

cJSON* IInboundData::ToJson() const
{
    return core::Write(*this, Fields());
}

const core::FieldTable& IInboundData::Fields() const
{
    return core::kNoFieldsSent;
}

const char* IInboundData::RootName() const
{
    return Fields().rootName;
}

bool IInboundData::Check(std::int32_t)
{
    return true;
}

std::unordered_set<std::string> IInboundData::PresentKeys() const
{
    return core::PresentKeys(*this, Fields());
}

bool IInboundData::IsPresent(std::string_view key) const
{
    return core::IsPresent(*this, Fields(), key);
}

IInboundData& IInboundData::operator=(IInboundData&& other) noexcept
{
    IJSONStruct::operator=(static_cast<IJSONStruct&&>(other));
    SerializationIgnoreItemFeatures::operator=(static_cast<SerializationIgnoreItemFeatures&&>(other));
    return *this;
}

void IReturnData::Parse(const cJSON* node)
{
    core::ParseByTable(*this, Fields(), node);
}

cJSON* IReturnData::ToJson() const
{
    return core::Write(*this, Fields());
}

const core::FieldTable& IReturnData::Fields() const
{
    return core::kNoFields;
}

std::unordered_set<std::string> IReturnData::PresentKeys() const
{
    return core::PresentKeys(*this, Fields());
}

bool IReturnData::IsPresent(std::string_view key) const
{
    return core::IsPresent(*this, Fields(), key);
}

IReturnData& IReturnData::operator=(IReturnData&& other) noexcept
{
    IJSONStruct::operator=(static_cast<IJSONStruct&&>(other));
    SerializationIgnoreItemFeatures::operator=(static_cast<SerializationIgnoreItemFeatures&&>(other));
    return *this;
}

} // namespace protocol
