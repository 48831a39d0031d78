#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "requests/Json.h"

// A row of a module's file as README.md describes it.

namespace requests {

/// What a row says about a JSON text.
struct Form {
    enum class Kind { None, Literal, Keys, Text };
    Kind kind = Kind::None;
    std::string text; ///< Literal and Text.
    std::string root; ///< Keys: the one member, and what stands under it.
    std::vector<Key> keys;
    bool named = false; ///< The keys are named, not left to the structure.
    bool more = false;  ///< Others may follow.
};

/// An exchange beside the one that the row is about.
struct Step {
    int method = 0;
    std::string path;
    std::string body;
    std::string data = "{}";
};

enum class Route { Platform, Dag, Batch, Kestrel, Netsdk, Wall, Nothing };

struct Row {
    std::string file;
    int line = 0;
    std::string function;
    std::map<std::string, std::string> arguments;

    Route route = Route::Platform;
    bool internal = false;
    int method = 0;
    std::string path;    ///< Platform and Wall.
    int command = 0;     ///< Dag, Batch and Netsdk.
    std::string request; ///< Kestrel: the text for the device.

    Form body, in, answer, out;
    std::string condition, status;
    std::map<std::string, std::string> headers, params, fields;
    int timeoutMs = 0; ///< 0 where the row says nothing.
    std::vector<Step> first, then;
    std::map<std::string, std::string> gives, appends;
    std::string code, error, longKey;
    /// Direct calls: the name in front of what is logged, that of the texts which name another operation, what stands
    /// behind "success!", and what is logged in between.
    std::string logs, success;
    std::map<std::string, std::string> misnamed;
    std::vector<std::string> also;
    std::string raw, returns, otherwise;
    bool hasRaw = false, hasReturns = false;
    bool judged = false, unread = false, failure = false, tolerant = false, alone = false;
};

struct Rows {
    std::vector<Row> rows;
    /// "file:line: what could not be read".
    std::vector<std::string> errors;
};

Rows ReadRows(const std::string& file);

/// The text with the identifier in the place of every '*'; "*$" stands for the identifier in 32 characters.
std::string With(const std::string& text, const std::string& id);
/// The same where the identifier stands inside a JSON text.
std::string WithInJson(const std::string& json, const std::string& id);

} // namespace requests
