#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/Clock.h"
#include "src/Engine.h"
#include "src/Fields.h"

namespace nexwire::simulator {

/// The register of persons for one request. A person's document holds the sections that the library's structure names,
/// and beside them what other services look at: personnelNo, personnelName, orgGuid, cards and counts of credentials.
class Register {
public:
    explicit Register(Handling& handling) : handling_(handling), memory_(handling.Memory()) {}

    /// Gives the persons of a fresh database their sections, once.
    void Unfold();

    /// @return the new person's GUID; refuses what is incomplete or belongs to somebody else.
    std::string Add(const Json& info);
    /// Replaces the sections that are there.
    void Change(const std::string& guid, const Json& sections);
    void Erase(const std::string& guid);
    /// Refuses when there is none.
    Json Need(std::string_view guid);
    /// Keeps a person whose sections have changed.
    void Save(const std::string& guid, Json& person);
    /// The sections of a person, those in `wanted` or all.
    Json Info(const Json& person, const Json* wanted);
    /// The next number by the rule, not yet given.
    std::string NextNumber();
    Json Rule();

    /// Persons that a condition fits; `orgGuid` from the path replaces its own.
    Selection Matching(const Json& condition, std::string_view orgGuid);
    /// Who has what only one person can have; empty: nobody.
    /// @param kind  "personNo", "cardList" with a card's number, "fingerprintList" with a template, "faceList" with a
    /// GUID.
    std::string Owner(std::string_view kind, std::string_view value);
    /// Keys of the persons with a text (see `HoldsText`), apart from one.
    std::vector<std::string> Holders(const std::string& field, std::string_view text, std::string_view apartFrom = {});

    Json NeedOrganisation(std::string_view guid);
    /// What a caller sees of an organisation.
    Json Shown(const Json& organisation);
    /// An organisation and those below it, parents first; everything for an empty one.
    std::vector<std::string> Subtree(std::string_view guid);

private:
    void Check(const std::string& guid, const Json& sections);
    /// Refuses values that lack a property which every person needs.
    void CheckProperties(const Json& values);
    void ForgetOwned(const std::string& guid);

    Handling& handling_;
    Allocator& memory_;
};

/// Works through a list of the body. `each` adds to an element's result; what it refuses becomes the result's code.
void ForEach(Handling& handling, std::string_view list, Json& answer, std::string_view member,
             const std::function<void(const Json& element, Json& result)>& each);

/// A list of credentials inside a person's document, made when it is missing.
Json& SectionList(Json& person, std::string_view key, Allocator& memory);
/// The element whose member has this text, or null.
Json* FindElement(Json& list, std::string_view member, std::string_view value);

} // namespace nexwire::simulator
