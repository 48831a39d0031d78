#include "nexwire/JSONStruct.h"

#include <algorithm>
#include <cmath>
#include <cstring>
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

bool HasText(const cJSON* node)
{
    return cJSON_IsString(node) != 0 && node->valuestring != nullptr;
}

/// How many children a node has, once it is known that the answer may cost elements of that size for them.
std::size_t Counted(const cJSON* node, std::size_t elementBytes)
{
    std::size_t count = 0;
    for (const cJSON* child = node->child; child != nullptr; child = child->next) {
        ++count;
    }
    ChargeAnswer(std::uint64_t{count} * elementBytes);
    return count;
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

void ReadField(void* base, const Field& field, const cJSON* node)
{
    switch (field.kind) {
    case Kind::Text:
        if (HasText(node)) {
            At<std::string>(base, field) = node->valuestring;
        } else {
            At<std::string>(base, field).clear();
        }
        break;
    case Kind::Int:
        if (cJSON_IsNumber(node) != 0) {
            At<std::int32_t>(base, field) = node->valueint;
        }
        break;
    case Kind::Int64:
        if (cJSON_IsNumber(node) != 0) {
            At<std::int64_t>(base, field) = ToInt64(node->valuedouble);
        }
        break;
    case Kind::Real:
        if (cJSON_IsNumber(node) != 0) {
            At<double>(base, field) = node->valuedouble;
        }
        break;
    case Kind::Bool:
        if (cJSON_IsBool(node) != 0) {
            At<bool>(base, field) = cJSON_IsTrue(node) != 0;
        }
        break;
    case Kind::Struct:
        if (cJSON_IsObject(node) != 0) {
            StructOps::AsStruct(&At<char>(base, field))->Parse(node);
        }
        break;
    case Kind::TextList:
        if (cJSON_IsArray(node) != 0) {
            auto& list = At<std::vector<std::string>>(base, field);
            list.reserve(Counted(node, sizeof(std::string)));
            for (const cJSON* child = node->child; child != nullptr; child = child->next) {
                list.emplace_back(HasText(child) ? child->valuestring : "");
            }
        }
        break;
    case Kind::IntList:
        if (cJSON_IsArray(node) != 0) {
            auto& list = At<std::vector<std::int32_t>>(base, field);
            list.reserve(Counted(node, sizeof(std::int32_t)));
            for (const cJSON* child = node->child; child != nullptr; child = child->next) {
                list.push_back(cJSON_IsNumber(child) != 0 ? child->valueint : 0);
            }
        }
        break;
    case Kind::StructList:
        if (cJSON_IsArray(node) != 0) {
            const ListOps& ops = field.List();
            void* const first = ops.Renew(&At<char>(base, field), Counted(node, ops.size));
            std::size_t index = 0;
            for (const cJSON* child = node->child; child != nullptr; child = child->next, ++index) {
                if (cJSON_IsObject(child) != 0) {
                    ops.Element(first, index)->Parse(child);
                }
            }
        }
        break;
    }
}

void Read(IJSONStruct& object, void* base, const FieldTable& table, const cJSON* node)
{
    if (node == nullptr) {
        return;
    }
    StructAccess::Clear(object);
    ClearLists(base, table);
    std::size_t expected = 0;
    for (const cJSON* child = node->child; child != nullptr; child = child->next) {
        if (child->string == nullptr) {
            continue;
        }
        const std::size_t index = FindField(table, expected, child->string);
        if (index == table.count || StructAccess::Test(object, index)) {
            continue;
        }
        StructAccess::Set(object, index);
        ReadField(base, table.fields[index], child);
        expected = index + 1;
    }
}

cJSON* MakeTextList(const std::vector<std::string>& list)
{
    JsonTree array(cJSON_CreateArray());
    for (const std::string& text : list) {
        cJSON* const item = cJSON_CreateString(text.c_str());
        if (item == nullptr || cJSON_AddItemToArray(array.get(), item) == 0) {
            cJSON_Delete(item);
            return nullptr;
        }
    }
    return array.Release();
}

cJSON* MakeIntList(const std::vector<std::int32_t>& list)
{
    JsonTree array(cJSON_CreateArray());
    for (const std::int32_t number : list) {
        cJSON* const item = cJSON_CreateNumber(number);
        if (item == nullptr || cJSON_AddItemToArray(array.get(), item) == 0) {
            cJSON_Delete(item);
            return nullptr;
        }
    }
    return array.Release();
}

cJSON* MakeStructList(const void* list, const ListOps& ops)
{
    JsonTree array(cJSON_CreateArray());
    std::size_t count = 0;
    void* const first = ops.Look(list, count);
    for (std::size_t i = 0; i < count; ++i) {
        cJSON* const item = ops.Element(first, i)->ToJson();
        if (item == nullptr || cJSON_AddItemToArray(array.get(), item) == 0) {
            cJSON_Delete(item);
            return nullptr;
        }
    }
    return array.Release();
}

cJSON* MakeInt64(std::int64_t value)
{
    // cJSON prints numbers with 15 digits; larger ones go in as text.
    constexpr std::int64_t kPrintedExactly = 999999999999999;
    if (value >= -kPrintedExactly && value <= kPrintedExactly) {
        return cJSON_CreateNumber(static_cast<double>(value));
    }
    return cJSON_CreateRaw(std::to_string(value).c_str());
}

cJSON* MakeItem(const void* base, const Field& field)
{
    switch (field.kind) {
    case Kind::Text:
        return cJSON_CreateString(At<std::string>(base, field).c_str());
    case Kind::Int:
        return cJSON_CreateNumber(At<std::int32_t>(base, field));
    case Kind::Int64:
        return MakeInt64(At<std::int64_t>(base, field));
    case Kind::Real:
        return cJSON_CreateNumber(At<double>(base, field));
    case Kind::Bool:
        return cJSON_CreateBool(At<bool>(base, field) ? 1 : 0);
    case Kind::Struct:
        return StructOps::AsStruct(const_cast<char*>(&At<char>(base, field)))->ToJson();
    case Kind::TextList:
        return MakeTextList(At<std::vector<std::string>>(base, field));
    case Kind::IntList:
        return MakeIntList(At<std::vector<std::int32_t>>(base, field));
    case Kind::StructList:
        return MakeStructList(&At<char>(base, field), field.List());
    }
    return nullptr;
}

cJSON* Write(const void* base, const FieldTable& table, const SerializationIgnoreItemFeatures& filter)
{
    const bool all = filter.FilterMode() == SerializationIgnoreItemFeatures::kLeaveOut && filter.FilterKeys().empty();
    JsonTree object(cJSON_CreateObject());
    if (object.get() == nullptr) {
        return nullptr;
    }
    for (const Field& field : table) {
        if (!all && filter.IsLeftOut(field.key)) {
            continue;
        }
        cJSON* const item = MakeItem(base, field);
        // The keys are literals of this library and outlive every tree.
        if (item == nullptr || cJSON_AddItemToObjectCS(object.get(), field.key, item) == 0) {
            cJSON_Delete(item);
            return nullptr;
        }
    }
    return object.Release();
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

SerializationIgnoreItemFeatures& FilterOf(IJSONStruct& object, bool inbound)
{
    if (inbound) {
        return static_cast<protocol::IInboundData&>(object);
    }
    return static_cast<protocol::IReturnData&>(object);
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

} // namespace

void MoveByTable(IJSONStruct& to, IJSONStruct& from, const FieldTable& fields)
{
    StructAccess::Move(to, from);
    FilterOf(to, fields.ops.inbound) = std::move(FilterOf(from, fields.ops.inbound));
    for (const Field& field : fields) {
        MoveField(&to, &from, field);
    }
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
    const cJSON* const node = scope.Parse(text_, position);
    if (node == nullptr) {
        return false;
    }
    structure.Parse(node);
    return true;
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
    core::Read(*this, this, Fields(), node);
}

cJSON* IInboundData::ToJson() const
{
    return core::Write(this, Fields(), *this);
}

const core::FieldTable& IInboundData::Fields() const
{
    return core::kNoFields;
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
    core::Read(*this, this, Fields(), node);
}

cJSON* IReturnData::ToJson() const
{
    return core::Write(this, Fields(), *this);
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
