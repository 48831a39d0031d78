// What holds for every structure there is.

#include <cctype>
#include <cstring>
#include <new>
#include <set>

#include <gtest/gtest.h>

#include "structures.inc.headers"

#include "core/FieldTable.h"
#include "core/JsonTree.h"
#include "nexwire/ParseJSONUtil.h"
#include "support/Filled.h"

namespace sample {

/// What the compiler lets through: the forgotten member hides in alignment padding.
struct Leaky : protocol::IReturnData {
    bool listed = false;
    bool forgotten = false;
    std::string text;
    NEXWIRE_JSON
};

NEXWIRE_RETURN_FIELDS(Leaky, F(listed), F(text))

} // namespace sample

namespace {

using nexwire::core::Field;
using nexwire::core::FieldTable;
using nexwire::core::JsonTree;
using protocol::IJSONStruct;

/// A structure without its type.
struct Entry {
    const char* name;
    const FieldTable* table;
    std::size_t size;
    bool inbound;
    IJSONStruct* (*construct)(void* memory);
    void (*destroy)(void* memory);
};

template <class T>
Entry MakeEntry(const char* name)
{
    return {name,
            &T::kFields,
            sizeof(T),
            std::is_base_of<protocol::IInboundData, T>::value,
            [](void* memory) -> IJSONStruct* { return new (memory) T; },
            [](void* memory) { static_cast<T*>(memory)->~T(); }};
}

const std::vector<Entry>& AllStructures()
{
    static const std::vector<Entry> entries = {
#define STRUCTURE(T) MakeEntry<T>(#T),
#include "structures.inc"
#undef STRUCTURE
    };
    return entries;
}

/// One object of a structure in memory that was filled with a pattern before.
class Object {
public:
    explicit Object(const Entry& entry, int pattern = 0) : entry_(entry), memory_(entry.size / 8 + 1)
    {
        std::memset(memory_.data(), pattern, memory_.size() * 8);
        structure_ = entry_.construct(memory_.data());
    }
    ~Object() { entry_.destroy(memory_.data()); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    IJSONStruct& operator*() { return *structure_; }
    unsigned char* Bytes() { return reinterpret_cast<unsigned char*>(memory_.data()); }
    std::string Printed() const
    {
        const JsonTree tree(structure_->ToJson());
        return nexwire::core::PrintFormatted(tree.get());
    }

private:
    const Entry& entry_;
    std::vector<std::uint64_t> memory_;
    IJSONStruct* structure_;
};

TEST(AllStructures, AreListed)
{
    EXPECT_GT(AllStructures().size(), 40u);
}

/// Offsets that the constructor wrote although neither base nor table accounts for them. Padding keeps the pattern
/// it had before.
std::vector<std::size_t> Unaccounted(const Entry& entry)
{
    Object first(entry, 0xAA);
    Object second(entry, 0x55);
    const std::size_t filter = sizeof(protocol::SerializationIgnoreItemFeatures);
    std::vector<bool> known(entry.size);
    std::fill_n(known.begin(), sizeof(protocol::IInboundData) - filter, true);
    std::fill_n(known.end() - static_cast<std::ptrdiff_t>(filter), filter, true);
    for (const Field& field : *entry.table) {
        std::fill_n(known.begin() + field.offset, field.size, true);
    }
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < entry.size; ++i) {
        if (!known[i] && (first.Bytes()[i] != 0xAA || second.Bytes()[i] != 0x55)) {
            offsets.push_back(i);
        }
    }
    return offsets;
}

TEST(AllStructures, HaveNoMemberTheirTableMisses)
{
    EXPECT_EQ(Unaccounted(MakeEntry<sample::Leaky>("Leaky")).size(), 1u);
    for (const Entry& entry : AllStructures()) {
        for (const std::size_t offset : Unaccounted(entry)) {
            ADD_FAILURE() << entry.name << " has a member at offset " << offset << " that its table misses";
        }
    }
}

TEST(AllStructures, HaveDistinctKeysAndOnlyRequestsARootName)
{
    for (const Entry& entry : AllStructures()) {
        std::set<std::string> keys;
        for (const Field& field : *entry.table) {
            EXPECT_TRUE(keys.insert(field.key).second) << entry.name << " has two members " << field.key;
            EXPECT_STRNE(field.key, "") << entry.name;
        }
        EXPECT_EQ(entry.table->rootName != nullptr, entry.inbound) << entry.name;
        if (entry.inbound) {
            EXPECT_STRNE(entry.table->rootName, "") << entry.name;
        }
    }
}

TEST(AllStructures, ComeBackFromTheWireAsTheyWereSent)
{
    for (const Entry& entry : AllStructures()) {
        Object fresh(entry);
        const std::string defaults = fresh.Printed();
        Object again(entry);
        const JsonTree parsed(cJSON_Parse(defaults.c_str()));
        (*again).Parse(parsed.get());
        EXPECT_EQ(again.Printed(), defaults) << entry.name;

        int counter = 0;
        const JsonTree filled(test::Filled(*entry.table, counter, 0));
        Object read(entry);
        (*read).Parse(filled.get());
        EXPECT_EQ(read.Printed(), nexwire::core::PrintFormatted(filled.get())) << entry.name;
        (*read).Parse(nullptr);
        EXPECT_EQ(read.Printed(), nexwire::core::PrintFormatted(filled.get())) << entry.name;

        // Every value of the wrong type, then of none: lists end empty, nothing else may break.
        for (const char* wrong : {"null", "[null,1,\"x\",{}]", "{\"x\":1}", "\"x\"", "1e300", "false"}) {
            const JsonTree object(cJSON_CreateObject());
            for (const Field& field : *entry.table) {
                cJSON_AddItemToObject(object.get(), field.key, cJSON_Parse(wrong));
            }
            (*read).Parse(object.get());
            EXPECT_FALSE(read.Printed().empty()) << entry.name;
        }
    }
}

} // namespace
