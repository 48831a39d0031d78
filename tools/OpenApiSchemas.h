#pragma once

#include <set>
#include <string>
#include <vector>

#include <rapidjson/document.h>

#include "catalogue/Observed.h"

namespace nexwire::tools {

constexpr const char* kSchemas = "#/components/schemas/";

/// The pieces of an OpenAPI document, and in it the structures: their schemas and examples that keep to them.
class SchemaWriter {
protected:
    using Value = rapidjson::Value;

    Value Text(const std::string& text);
    Value Object();
    Value Array();
    void Add(Value& object, const std::string& key, Value value);
    void Add(Value& object, const std::string& key, const std::string& text);
    void Push(Value& array, Value value);
    Value Json(const std::string& json);
    Value Reference(const std::string& structure);
    /// One schema as it is, several as alternatives.
    Value AnyOf(std::vector<Value> schemas);
    Value OfType(const std::string& type);
    /// The schema of what a function was seen to send or to read; members that its record has, too, are told as there.
    Value ShownSchema(const Value& shown, const std::string& record);
    /// Changes what a comment does not allow, such as the defaults of members that must be given.
    void Fit(Value& value, const catalogue::MemberView& member);
    void Fit(Value& value, const std::string& structure);
    /// A structure with a value for each member.
    Value FilledSample(const std::string& structure, const std::string& outBuffer = "");
    Value MemberSchema(const catalogue::MemberView& member);
    /// Structures that no operation holds: of functions that send nothing or leave one out, and those for functions
    /// that take one of the caller's choice.
    void Further();
    void Components();

    rapidjson::Document document_;
    std::set<std::string> used_; ///< Structures that something refers to.

private:
    static bool HoldsObjects(const Value& value);
    /// Gives texts that are empty something to say, and device texts theirs.
    void Fill(Value& value, const std::string& outBuffer);
    void AddBound(Value& schema, const char* key, const catalogue::Bound& bound);
    /// Adds a schema beside another that may hold instead.
    void AddInstead(Value& schema, Value first, Value second);
    /// What the comment says about the values of a plain member.
    void AddLimits(Value& schema, const catalogue::Limits& limits);
};

} // namespace nexwire::tools
