// What holds for every structure there is.

#include <cctype>
#include <cstring>
#include <new>
#include <set>

#include <gtest/gtest.h>

#include "core/FieldTable.h"
#include "core/JsonTree.h"
#include "core/Structures.h"
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

const std::vector<const FieldTable*>& AllTables()
{
    static const std::vector<const FieldTable*> tables = [] {
        std::vector<const FieldTable*> all;
        for (const nexwire::core::StructureGroup& group : nexwire::core::AllStructures()) {
            for (std::size_t i = 0; i < group.count; ++i) {
                all.push_back(*group.tables[i]);
            }
        }
        return all;
    }();
    return tables;
}

/// One object of a structure in memory that was filled with a pattern before.
class Object {
public:
    explicit Object(const FieldTable& table, int pattern = 0) : table_(table)
    {
        memory_ = ::operator new(table.ops.size);
        std::memset(memory_, pattern, table.ops.size);
        table.ops.Construct(memory_);
    }
    ~Object() { nexwire::core::Destroy(table_.ops, memory_); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    IJSONStruct& operator*() { return *nexwire::core::StructOps::AsStruct(memory_); }
    unsigned char* Bytes() { return static_cast<unsigned char*>(memory_); }
    std::string Printed() const
    {
        const JsonTree tree(nexwire::core::StructOps::AsStruct(memory_)->ToJson());
        return nexwire::core::PrintFormatted(tree.get());
    }

private:
    const FieldTable& table_;
    void* memory_;
};

TEST(AllStructures, AreListed)
{
    EXPECT_GT(AllTables().size(), 40u);
}

/// Offsets that the constructor wrote although neither base nor table accounts for them. Padding keeps the pattern
/// it had before.
std::vector<std::size_t> Unaccounted(const FieldTable& entry)
{
    Object first(entry, 0xAA);
    Object second(entry, 0x55);
    using Filter = protocol::SerializationIgnoreItemFeatures;
    std::vector<bool> known(entry.ops.size);
    NEXWIRE_OFFSETS_BEGIN
    const std::size_t members = entry.ops.inbound ? offsetof(nexwire::core::Begun<protocol::IInboundData>, first)
                                                  : offsetof(nexwire::core::Begun<protocol::IReturnData>, first);
    NEXWIRE_OFFSETS_END
    std::fill_n(known.begin(), members, true);
    // It stands behind the members, and not always at the very end.
    auto* const filter = reinterpret_cast<unsigned char*>(&dynamic_cast<Filter&>(*first));
    std::fill_n(known.begin() + (filter - first.Bytes()), sizeof(Filter), true);
    for (const Field& field : entry) {
        std::fill_n(known.begin() + field.offset, field.size, true);
    }
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < entry.ops.size; ++i) {
        if (!known[i] && (first.Bytes()[i] != 0xAA || second.Bytes()[i] != 0x55)) {
            offsets.push_back(i);
        }
    }
    return offsets;
}

TEST(AllStructures, HaveNoMemberTheirTableMisses)
{
    EXPECT_EQ(Unaccounted(sample::Leaky::Table::kFields).size(), 1u);
    for (const FieldTable* table : AllTables()) {
        const FieldTable& entry = *table;
        for (const std::size_t offset : Unaccounted(entry)) {
            ADD_FAILURE() << entry.name << " has a member at offset " << offset << " that its table misses";
        }
    }
}

TEST(AllStructures, HaveDistinctKeysAndNoEmptyRootName)
{
    for (const FieldTable* table : AllTables()) {
        const FieldTable& entry = *table;
        std::set<std::string> keys;
        for (const Field& field : entry) {
            EXPECT_TRUE(keys.insert(field.key).second) << entry.name << " has two members " << field.key;
            EXPECT_STRNE(field.key, "") << entry.name;
        }
        EXPECT_TRUE(entry.rootName == nullptr || *entry.rootName != '\0') << entry.name;
    }
}

TEST(AllStructures, ComeBackFromTheWireAsTheyWereSent)
{
    for (const FieldTable* table : AllTables()) {
        const FieldTable& entry = *table;
        Object fresh(entry);
        const std::string defaults = fresh.Printed();
        Object again(entry);
        const JsonTree parsed(cJSON_Parse(defaults.c_str()));
        (*again).Parse(parsed.get());
        EXPECT_EQ(again.Printed(), defaults) << entry.name;

        int counter = 0;
        const JsonTree filled(test::Filled(entry, counter, 0));
        Object read(entry);
        (*read).Parse(filled.get());
        EXPECT_EQ(read.Printed(), nexwire::core::PrintFormatted(filled.get())) << entry.name;
        (*read).Parse(nullptr);
        EXPECT_EQ(read.Printed(), nexwire::core::PrintFormatted(filled.get())) << entry.name;

        // Neither does it lose anything on the way from a fresh result into the caller's.
        Object moved(entry);
        nexwire::core::MoveByTable(*moved, *read, entry);
        EXPECT_EQ(moved.Printed(), nexwire::core::PrintFormatted(filled.get())) << entry.name;

        // Every value of the wrong type, then of none: lists end empty, nothing else may break.
        for (const char* wrong : {"null", "[null,1,\"x\",{}]", "{\"x\":1}", "\"x\"", "1e300", "false"}) {
            const JsonTree object(cJSON_CreateObject());
            for (const Field& field : entry) {
                cJSON_AddItemToObject(object.get(), field.key, cJSON_Parse(wrong));
            }
            (*read).Parse(object.get());
            EXPECT_FALSE(read.Printed().empty()) << entry.name;
        }
    }
}

} // namespace
