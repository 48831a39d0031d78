#include <algorithm>
#include <array>

#include "src/Rules.h"

// How a body narrows a query, by what its members are called.

namespace nexwire::simulator {
namespace {

constexpr std::array kPageSizes = {"pageSize", "maxNum", "maxResults", "maxResultNum", "limit", "pageCount", "perPage"};
constexpr std::array kPageNumbers = {"pageNo", "pageIndex", "pageNum", "pageNumber", "page", "currentPage", "curPage"};
constexpr std::array kOffsets = {"offset", "startIndex", "searchResultPosition", "position", "beginIndex", "startNo"};
constexpr std::int64_t kMost = 1000000;

template <std::size_t Count>
std::int64_t NumberOf(const Json& body, const std::array<const char*, Count>& names)
{
    for (const auto& member : body.GetObject()) {
        const bool named =
            std::any_of(names.begin(), names.end(), [&](const char* name) { return Same(name, AsText(&member.name)); });
        if (named && member.value.IsInt64()) {
            return std::clamp<std::int64_t>(member.value.GetInt64(), 0, kMost);
        }
        if (member.value.IsObject()) {
            if (const std::int64_t inner = NumberOf(member.value, names)) {
                return inner;
            }
        }
    }
    return 0;
}

template <std::size_t Count>
bool Has(const std::array<const char*, Count>& names, std::string_view key)
{
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return Same(name, key); });
}

// Whether a vocabulary gives 0 a meaning of its own.
bool ZeroCounts(const WireMember& member)
{
    for (const WireValue& value : member.values) {
        if (value.text.empty() && value.number == 0) {
            return !BeginsWith(value.meaning, "any") && !BeginsWith(value.meaning, "all");
        }
    }
    return false;
}

bool MatchesAnywhere(std::string_view key)
{
    return EndsWith(key, "name") || EndsWith(key, "title") || EndsWith(key, "keyword") || EndsWith(key, "remark") ||
           EndsWith(key, "description");
}

class Narrowing {
public:
    explicit Narrowing(Handling& handling) : handling_(handling), collection_(*handling.action->collection) {}

    Selection Made()
    {
        Selection selection{collection_.name};
        selection.orderBy = collection_.orderBy;
        selection.descending = collection_.descending;
        for (const FilterRule& rule : handling_.action->filters) {
            Filter(rule);
        }
        if (handling_.action->narrow) {
            Path();
            if (handling_.body != nullptr && handling_.endpoint.body != nullptr) {
                Body(*handling_.endpoint.body, *handling_.body, true);
            }
        }
        selection.conditions = std::move(conditions_);
        selection.any = handling_.action->any;
        return selection;
    }

private:
    void Filter(const FilterRule& rule)
    {
        fixed_.push_back(rule.field);
        for (const auto& [name, place] : handling_.endpoint.names) {
            if (AsText(rule.value).find("{" + name + "}") != std::string_view::npos) {
                spoken_.insert(place);
            }
        }
        const Json value = handling_.Fill(*rule.value);
        if (!value.IsNull()) {
            Put(rule.field, rule.test, value, rule.element);
        }
    }

    // Adds a condition unless the value means none.
    void Put(const std::string& field, Test test, const Json& value, const std::string& element = {})
    {
        if (AsText(&value, "-").empty() || (value.IsArray() && value.Empty())) {
            return;
        }
        if (value.IsArray() || test == Test::kHasElement || test == Test::kOneOf) {
            const std::string list = value.IsArray() ? PrintJson(value) : "[" + PrintJson(value) + "]";
            conditions_.push_back({field, test == Test::kHasElement ? test : Test::kOneOf, StoreValue(list), element});
            return;
        }
        const auto compared = ToStoreValue(value);
        if (!compared) {
            throw Refusal(Reason::kWrongType, field);
        }
        conditions_.push_back({field, test, *compared});
    }

    bool Fixed(const std::string& field) const
    {
        return std::find(fixed_.begin(), fixed_.end(), field) != fixed_.end();
    }

    void Path()
    {
        for (std::size_t i = 0; i < handling_.identifiers.size(); ++i) {
            if (spoken_.count(i) != 0) {
                continue;
            }
            const std::string& parent = handling_.endpoint.parents[i];
            const Json value = MakeText(handling_.identifiers[i], handling_.Memory());
            if (collection_.parents.count(parent) != 0) {
                Put("_" + parent, Test::kEquals, value);
                continue;
            }
            for (const auto& [name, place] : handling_.endpoint.names) {
                if (place == i && collection_.Find(name) != nullptr && !Fixed(name)) {
                    Put(name, Test::kEquals, value);
                    break;
                }
            }
        }
    }

    void Body(const WireStructure& structure, const Json& body, bool top)
    {
        for (const WireMember& member : structure.members) {
            const Json* value = Member(body, member.key);
            if (value == nullptr || Fixed(member.key)) {
                continue;
            }
            if (member.kind == WireKind::kStruct && member.structure != nullptr) {
                const bool off = top && structure.Find("isQuery") != nullptr && !AsBool(Member(body, "isQuery"));
                if (!off) {
                    Body(*member.structure, *value, false);
                }
            } else if (member.IsList()) {
                List(member, *value);
            } else if (member.kind != WireKind::kBool && member.kind != WireKind::kAny) {
                Plain(member, *value);
            }
        }
    }

    void List(const WireMember& member, const Json& value)
    {
        if (member.kind == WireKind::kStructList || !EndsWith(member.key, "List")) {
            return;
        }
        const std::string one = member.key.substr(0, member.key.size() - 4);
        if (Same(one, "guid") || one == collection_.key) {
            Put(collection_.key, Test::kOneOf, value);
        } else if (const WireMember* same = SameMember(one)) {
            Put(same->key, Test::kOneOf, value);
        } else if (collection_.Find(member.key) != nullptr) {
            Put(member.key, Test::kHasElement, value);
        }
    }

    // The documents' member of that name; "verifyMode" also finds "userVerifyMode".
    const WireMember* SameMember(const std::string& name) const
    {
        if (const WireMember* exact = collection_.Find(name)) {
            return exact;
        }
        const WireMember* found = nullptr;
        for (const WireStructure* structure : {collection_.element, collection_.source}) {
            for (const WireMember& member : structure == nullptr ? none_ : structure->members) {
                if (found == nullptr && EndsWith(member.key, name)) {
                    found = &member;
                }
            }
        }
        return found;
    }

    void Plain(const WireMember& member, const Json& value)
    {
        if (Has(kPageSizes, member.key) || Has(kPageNumbers, member.key) || Has(kOffsets, member.key)) {
            return;
        }
        if (value.IsNumber() && (AsInt(&value, 1) == -1 || (AsInt(&value, 1) == 0 && !ZeroCounts(member)))) {
            return;
        }
        for (const auto& [begin, test] :
             {std::make_pair("begin", Test::kAtLeast), std::make_pair("start", Test::kAtLeast),
              std::make_pair("end", Test::kAtMost), std::make_pair("stop", Test::kAtMost)}) {
            const bool bound =
                BeginsWith(member.key, begin) && (EndsWith(member.key, "time") || EndsWith(member.key, "date"));
            if (bound) {
                const std::string time = Time(member.key);
                if (!time.empty() && !Fixed(time)) {
                    // The last of some days counts to its end.
                    const bool lastDay =
                        test == Test::kAtMost && EndsWith(member.key, "date") && !AsText(&value).empty();
                    const std::string end = std::string(AsText(&value)) + "T24";
                    Put(time, test, lastDay ? MakeText(end, handling_.Memory()) : Copy(value, handling_.Memory()));
                }
                return;
            }
        }
        if (member.key == collection_.key || Same(member.key, "guid")) {
            Put(collection_.key, Test::kEquals, value);
        } else if (collection_.Find(member.key) != nullptr) {
            Put(member.key,
                member.kind == WireKind::kText && MatchesAnywhere(member.key) ? Test::kContains : Test::kEquals, value);
        }
    }

    std::string Time(const std::string& key) const
    {
        if (!collection_.time.empty()) {
            return collection_.time;
        }
        for (const char* name : {"beginTime", "startTime"}) {
            if (collection_.Find(name) != nullptr) {
                return name;
            }
        }
        const WireStructure* structure = collection_.element != nullptr ? collection_.element : collection_.source;
        for (const WireMember& member : structure == nullptr ? none_ : structure->members) {
            if (EndsWith(member.key, "time")) {
                return member.key;
            }
        }
        return collection_.Find(key) != nullptr ? key : std::string();
    }

    const std::vector<WireMember> none_;
    Handling& handling_;
    const Collection& collection_;
    std::vector<Condition> conditions_;
    std::vector<std::string> fixed_; ///< Fields that the entry has filters for.
    std::set<std::size_t> spoken_;   ///< Identifiers of the path that its filters name.
};

} // namespace

Selection Narrowed(Handling& handling)
{
    return Narrowing(handling).Made();
}

void Page(const Handling& handling, Selection& selection)
{
    if (handling.body == nullptr || !handling.body->IsObject()) {
        return;
    }
    const std::int64_t size = NumberOf(*handling.body, kPageSizes);
    if (size == 0) {
        return;
    }
    selection.limit = size;
    const std::int64_t offset = NumberOf(*handling.body, kOffsets);
    selection.offset =
        offset > 0 ? offset : (std::max<std::int64_t>(NumberOf(*handling.body, kPageNumbers), 1) - 1) * size;
}

} // namespace nexwire::simulator
