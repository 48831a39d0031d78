#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <velaproto/RapidJsonProto.h>

#include "core/AnswerReads.h"

// The words video wall requests are written in: which keys go out and which come in. Keys are paths; the JSON type
// follows from the C++ type.

namespace nexwire::videowall {

/// What else a service may send for a member besides its own type.
enum class Also {
    Nothing,
    Number, ///< For a text: a whole number, which becomes decimal text.
    Bool,   ///< For a number: true and false, which become 1 and 0.
};

/// A key of a record and the member it stands for.
template <class Record>
struct RecordField {
    const char* key;
    std::variant<std::string Record::*, int Record::*, bool Record::*> member;
    Also also = Also::Nothing;
};

/// Paths of the keys below another path, one at a time.
class Below {
public:
    explicit Below(const std::string& path) : path_(path + '/'), length_(path_.size()) {}
    Below(const std::string& path, std::size_t index) : Below(path + '/' + std::to_string(index)) {}

    const std::string& operator()(const char* key)
    {
        path_.resize(length_);
        return path_ += key;
    }

private:
    std::string path_;
    std::size_t length_;
};

/// One key of a body. Lists and texts with a name are only referred to and must outlive it.
class Key {
public:
    Key(const char* path, const std::string& text) : path_(path), value_(&text) {}
    Key(const char* path, std::string&& text) : path_(path), value_(std::move(text)) {}
    Key(const char* path, int number) : path_(path), value_(number) {}
    Key(const char* path, bool flag) : path_(path), value_(flag) {}
    Key(const char* path, const char* text) = delete;

    /// A list of objects of the fields given; an empty one is left out.
    template <class Record, std::size_t count>
    Key(const char* path, const std::vector<Record>& records, const RecordField<Record> (&fields)[count])
        : path_(path), value_(Writer([&records, &fields](proto::CRapidJsonProto& body, const std::string& at) {
              for (std::size_t i = 0; i < records.size(); ++i) {
                  Below element(at, i);
                  for (const RecordField<Record>& field : fields) {
                      const auto set = [&](auto member) { return body.Set(element(field.key), records[i].*member); };
                      if (!std::visit(set, field.member)) {
                          return false;
                      }
                  }
              }
              return true;
          }))
    {
    }

    /// A list of objects with one text each; an empty one is left out.
    Key(const char* path, const std::vector<std::string>& texts, const char* elementKey)
        : path_(path), value_(Writer([&texts, elementKey](proto::CRapidJsonProto& body, const std::string& at) {
              for (std::size_t i = 0; i < texts.size(); ++i) {
                  if (!body.Set(Below(at, i)(elementKey), texts[i])) {
                      return false;
                  }
              }
              return true;
          }))
    {
    }

    /// False when the value has no JSON form: text that is not UTF-8.
    bool WriteTo(proto::CRapidJsonProto& body) const;

private:
    using Writer = std::function<bool(proto::CRapidJsonProto&, const std::string&)>;

    const char* path_;
    std::variant<const std::string*, std::string, int, bool, Writer> value_;
};

/// The keys of a body in their order.
using Keys = std::vector<Key>;

/// The keys of both, in this order.
Keys Join(Keys first, const Keys& second);

/// The service's answer. A value that is missing or of another type leaves its target as it is.
class Answer {
public:
    /// False when the text is not JSON.
    bool Load(const std::string& text) { return json_.Load(text); }

    bool Read(const std::string& path, std::string& text, Also also = Also::Nothing) const;
    bool Read(const std::string& path, int& number, Also also = Also::Nothing) const;
    bool Read(const std::string& path, bool& flag, Also also = Also::Nothing) const;

    /// Reads the fields below `path` into the record: all of them or, when memory runs out, none.
    template <class Record, std::size_t count>
    void Read(const std::string& path, Record& record, const RecordField<Record> (&fields)[count]) const
    {
        Record fresh = record;
        ReadFields(Below(path), fresh, fields);
        record = std::move(fresh);
    }

    /// The records of the list at `path`.
    template <class Record, std::size_t count>
    std::vector<Record> List(const std::string& path, const RecordField<Record> (&fields)[count]) const
    {
        std::vector<Record> records(Size(path));
        for (std::size_t i = 0; i < records.size(); ++i) {
            ReadFields(Below(path, i), records[i], fields);
        }
        return records;
    }

    std::size_t Size(const std::string& path) const;

private:
    template <class Record, std::size_t count>
    void ReadFields(Below below, Record& record, const RecordField<Record> (&fields)[count]) const
    {
        for (const RecordField<Record>& field : fields) {
            std::visit([&](auto member) { Read(below(field.key), record.*member, field.also); }, field.member);
        }
    }

    void Note(const std::string& path, core::Kind kind) const
    {
        if (watched_ != nullptr) {
            watched_->paths.push_back({path, kind});
        }
    }

    proto::CRapidJsonProto json_;
    core::AnswerReads* const watched_ = core::WatchedAnswers();
};

} // namespace nexwire::videowall
