// complete_objects.cpp - the words that complete the name of an object, and its members.
#include "commands/complete_objects.h"

#include "objects/changes.h"
#include "objects/failure.h"
#include "terminal/attach.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <sstream>

namespace tool {

namespace {

using Words = std::vector<std::string>;

// A shell cuts NAME=VALUE into three words.
void JoinValues(Words& words)
{
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i] == "=") {
            const auto rest = words.begin() + static_cast<std::ptrdiff_t>(i);
            words[i - 1] += "=" + (i + 1 < words.size() ? words[i + 1] : "");
            words.erase(rest, rest + (i + 1 < words.size() ? 2 : 1));
        }
    }
}

std::optional<NamedObjects> ObjectsOf(const Words& words)
{
    try {
        return ParseObject(fmt::format("{}", fmt::join(words, " ")));
    } catch (const Failure&) {
        return std::nullopt;
    }
}

// Of the objects that are there, the word behind 'words'.
void AddPresent(const Words& words, std::set<std::string>& next)
{
    const Configuration present = ReadRegion();
    for (const ObjectClass& row : Catalogue()) {
        const Records records = row.records(present);
        for (std::size_t i = 0; i < records.count; ++i) {
            std::istringstream name(ObjectName(row, records.At(i)));
            std::size_t same = 0;
            for (std::string word; name >> word; ++same) {
                if (same == words.size()) {
                    next.insert(word);
                    break;
                }
                if (word != words[same]) {
                    break;
                }
            }
        }
    }
}

void AddLabels(const Words& words, std::set<std::string>& next)
{
    const Keys keys = words.size() != 2 ? Keys::kNone : words[0] == "port" ? Keys::kPort : Keys::kVlan;
    for (const ObjectClass& row : Catalogue()) {
        if (words.size() == 2 && row.keys == keys && row.id != Class::kPriority && !row.label.empty()) {
            next.emplace(row.label);
        }
    }
    if (words.empty()) {
        next.insert({"port", "vlan"});
    }
}

} // namespace

std::set<std::string> NextObjectWords(const std::string& command, Words words)
{
    JoinValues(words);
    std::set<std::string> next;
    const auto isValue = [](const std::string& word) { return word.find('=') != std::string::npos; };
    const auto firstValue = std::find_if(words.begin(), words.end(), isValue);
    const auto objects = ObjectsOf({words.begin(), firstValue});
    const bool isInValue = !words.empty() && words.back().ends_with('=');
    for (const Field& field : objects&& command != "delete" ? objects->pRow->fields : std::span<const Field>()) {
        if (isInValue && words.back() == std::string(field.name) + '=') {
            for (const Word& word : field.words) {
                next.emplace(word.text);
            }
        } else if (!isInValue && !IsKey(*objects->pRow, field)) {
            next.insert(std::string(field.name) + '=');
        }
    }
    if (firstValue == words.end()) {
        if (command == "add") {
            AddLabels(words, next);
        }
        try {
            AttachForReading();
            AddPresent(words, next);
        } catch (const Failure&) { // there is no region to ask
        }
    }
    return next;
}

} // namespace tool
