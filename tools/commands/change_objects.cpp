// change_objects.cpp - add, set and delete: changes of the objects that one name stands for.
#include "commands/change.h"
#include "commands/command.h"
#include "commands/faults_text.h"
#include "file/read_changes.h"
#include "objects/failure.h"
#include "objects/records.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fmt/format.h>

namespace tool {

namespace {

struct ObjectOptions : ChangeOptions {
    std::vector<std::string> words;
};

// A value as a file has it: numbers and true or false are no texts where the member has such.
Json ValueOf(const ObjectClass& row, std::string_view member, const std::string& text)
{
    const auto field = std::find_if(row.fields.begin(), row.fields.end(),
                                    [member](const Field& candidate) { return candidate.name == member; });
    if (field == row.fields.end() || field->notation != Notation::kNumber) {
        return text;
    }
    const auto hasWord = [field](std::string_view word) {
        return std::any_of(field->words.begin(), field->words.end(), [word](const Word& w) { return w.text == word; });
    };
    if (const bool isTrue = text == "true" || text == "yes";
        (isTrue || text == "false" || text == "no") && hasWord("true")) {
        return isTrue;
    }
    const Json number = Json::parse(text, nullptr, false);
    return number.is_number() ? number : Json(text);
}

// The words of the object, then NAME=VALUE.
std::string ObjectOf(std::vector<std::string>& words)
{
    const auto end = std::find_if(words.begin(), words.end(),
                                  [](const std::string& word) { return word.find('=') != std::string::npos; });
    const std::string object = fmt::format("{}", fmt::join(words.begin(), end, " "));
    words.erase(words.begin(), end);
    return object;
}

std::vector<ObjectChange> ChangesOf(DifferenceKind kind, std::vector<std::string> words, Strictness strictness)
{
    const std::string object = ObjectOf(words);
    const NamedObjects named = ParseObject(object);
    Json members = Json::object();
    for (const std::string& word : words) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw Failure(kBadInput, fmt::format("'{}' must be NAME=VALUE, such as pvid=10", word));
        }
        const std::string name = word.substr(0, equals);
        if (members.contains(name)) {
            throw Failure(kBadInput, fmt::format("{} is there twice", name));
        }
        members[name] = {{"after", ValueOf(*named.pRow, name, word.substr(equals + 1))}};
    }
    if (kind == DifferenceKind::kRemoved ? !members.empty() : kind == DifferenceKind::kChanged && members.empty()) {
        throw Failure(kBadInput, kind == DifferenceKind::kRemoved ? "delete takes an object and no values"
                                                                  : "a value is missing: NAME=VALUE, such as pvid=10");
    }
    const Json change = {{"object", object}, {"change", KindText(kind)}, {"members", std::move(members)}};
    const Json document = {{"schema", kSchema}, {"differences", Json::array({change})}};
    ParsedChanges parsed = ParseChanges(document.dump(-1, ' ', false, Json::error_handler_t::replace), 1, strictness);
    for (ConfigFault& fault : parsed.faults) {
        fault.line = 0;
        const std::string text = FaultText("", fault);
        if (fault.severity == Severity::kError) {
            throw Failure(kBadInput, text + "; nothing was changed");
        }
        std::fprintf(stderr, "piovios: warning: %s\n", text.c_str());
    }
    return std::move(parsed.changes);
}

// The settings of QinQ outlive a port that programs take away; a person who deletes a port means both.
void AddQinQ(const Configuration& present, std::vector<ObjectChange>& changes)
{
    const NamedObjects& objects = changes.front().objects;
    if (objects.pRow->id == Class::kPort && changes.front().kind == DifferenceKind::kRemoved) {
        const auto& sPort = *reinterpret_cast<const SwctSwitchPortRecord*>(objects.records.front().data());
        if (Find(present.aQinQ, KeyOf(sPort.sMoid)) != nullptr) {
            changes.push_back({DifferenceKind::kRemoved, ParseObject(ObjectName(*objects.pRow, &sPort) + " qinq"), {}});
        }
    }
}

std::string_view AdviceFor(DifferenceKind kind)
{
    return kind == DifferenceKind::kAdded     ? ", 'piovios set' changes what is there"
           : kind == DifferenceKind::kChanged ? ", 'piovios add' makes a new one"
                                              : "";
}

template <DifferenceKind kKind>
Action SetUp(CLI::App& command)
{
    const std::string name = command.get_name();
    auto options = std::make_shared<ObjectOptions>();
    command
        .add_option("WORDS", options->words,
                    kKind == DifferenceKind::kRemoved ? "Object, as diff names it"
                                                      : "Object, as diff names it, and its members NAME=VALUE")
        ->required()
        ->type_name("");
    AddChangeOptions(command, *options, nullptr);
    return [options, name](const Globals& globals) {
        auto changes = ChangesOf(kKind, options->words, options->lenient ? Strictness::kLenient : Strictness::kStrict);
        const auto apply = [&](const Configuration& present) {
            AddQinQ(present, changes);
            return Apply(present, changes, Conflicts::kRefuse, AdviceFor(kKind));
        };
        ChangeAndTell(name, *options, apply, globals.json);
        return kOk;
    };
}

} // namespace

Action SetUpAdd(CLI::App& command)
{
    return SetUp<DifferenceKind::kAdded>(command);
}

Action SetUpSet(CLI::App& command)
{
    return SetUp<DifferenceKind::kChanged>(command);
}

Action SetUpDelete(CLI::App& command)
{
    return SetUp<DifferenceKind::kRemoved>(command);
}

} // namespace tool
