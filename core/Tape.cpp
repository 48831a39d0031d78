#include "core/Tape.h"

#include <algorithm>
#include <cstring>

#include <cjson/cJSON.h>

#include "core/AnswerBudget.h"

namespace nexwire::core {

void Tape::Grow()
{
    constexpr std::size_t kLargestBlock = 1024;
    block_ = std::min(block_ * 2, kLargestBlock);
    ChargeAnswer(block_ * sizeof(TapeEntry));
    auto* const begin = static_cast<TapeEntry*>(arena_.Obtain(block_ * sizeof(TapeEntry)));
    if (last_ != nullptr) {
        last_->Begin(TapeEntry::What::Jump, 0);
        last_->SetNext(begin);
    } else {
        first_ = begin;
    }
    next_ = begin;
    last_ = begin + block_ - 1;
}

char* TapeCursor::Copy(std::string_view text)
{
    auto* const copy = static_cast<char*>(arena_.Obtain(text.size() + 1));
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

cJSON* TapeCursor::Node(const TapeEntry& entry)
{
    ChargeAnswer(sizeof(cJSON));
    auto* const node = static_cast<cJSON*>(arena_.Obtain(sizeof(cJSON)));
    *node = cJSON();
    const auto read = [&](bool keyed) {
        cJSON* last = nullptr;
        for (std::size_t i = 0; i < entry.size(); ++i) {
            char* const key = keyed ? Copy(Next().text()) : nullptr;
            cJSON* const child = Node(Next());
            child->string = key;
            child->prev = last;
            (last != nullptr ? last->next : node->child) = child;
            last = child;
        }
        // The first one tells the last, as everywhere in cJSON's trees.
        if (last != nullptr) {
            node->child->prev = last;
        }
    };
    switch (entry.what()) {
    case TapeEntry::What::Number:
        node->type = cJSON_Number;
        node->valuedouble = entry.number();
        node->valueint = entry.integer();
        break;
    case TapeEntry::What::Text:
        node->type = cJSON_String;
        node->valuestring = Copy(entry.text());
        break;
    case TapeEntry::What::True:
        node->type = cJSON_True;
        node->valueint = 1;
        break;
    case TapeEntry::What::False:
        node->type = cJSON_False;
        break;
    case TapeEntry::What::Array:
        node->type = cJSON_Array;
        read(false);
        break;
    case TapeEntry::What::KeyedObject:
        node->type = cJSON_Object;
        read(true);
        break;
    default:
        node->type = cJSON_NULL;
        break;
    }
    return node;
}

} // namespace nexwire::core
