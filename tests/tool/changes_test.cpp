// Change sets: what is refused, and with which words.
#include "file/read_changes.h"
#include "objects/failure.h"
#include "random_node.h"

#include <gtest/gtest.h>

namespace {

using namespace tool;

std::string FirstFault(const std::string& text)
{
    const ParsedChanges parsed = ParseChanges(text, 1, Strictness::kStrict);
    if (parsed.nrOfErrors == 0) {
        return "none";
    }
    const ConfigFault& fault = parsed.faults.front();
    return fault.object + "|" + fault.path + "|" + fault.value + ": " + fault.rule;
}

TEST(ChangesTest, RubbishIsToldWithItsPlace)
{
    constexpr const char* kCases[][2] = {
        {"", "ends too early"},
        {"7", "no change set"},
        {"{}", "no change set"},
        {R"({"schema": 1, "vlans": []})", "'piovios load' takes it"},
        {R"({"schema": 1, "error": {"message": "no such file"}})", "no such file"},
        {R"({"differences": []})", "|$.schema|: must be 1"},
        {R"({"schema": 2, "differences": []})", "|$.schema|2: must be 1"},
        {R"({"schema": 1, "differences": 5})", "|$.differences|5: must be a list"},
        {R"({"schema": 1, "diferences": [], "differences": []})", "\"differences\" is"},
        {R"({"schema": 1, "differences": [5]})", "|$.differences[0]|5: must be an object"},
        {R"({"schema": 1, "differences": [{"object": 5, "change": "added"}]})", "must be the name of an object"},
        {R"({"schema": 1, "differences": [{"object": "vlan 5", "change": "moved"}]})",
         "vlan 5|$.differences[0].change"},
        {R"({"schema": 1, "event": "party"})", "must be \"change\", \"start\""},
        {R"({"schema": 1, "event": "change", "object": "vlan 5", "change": "removed", "more": -1})", "$.more|-1"},
    };
    for (const auto& [text, expected] : kCases) {
        EXPECT_NE(std::string::npos, FirstFault(text).find(expected)) << text << ": " << FirstFault(text);
    }
}

TEST(ChangesTest, EachObjectAndMemberIsRead)
{
    // Object, kind, members, and what is wrong; "none": nothing is.
    constexpr const char* kCases[][4] = {
        {"vlan 5", "removed", "{}", "none"},
        {"vlan 4095", "added", "{}", "none"},
        {"vlan 4096", "added", "{}", "VLAN ids 1 to 4095"},
        {"vlan", "added", "{}", "is missing"},
        {"vlan 1-3 inner-tag", "removed", "{}", "'1-3' must be a VLAN id"},
        {"vlan 5 port 1/1", "added", "{}", "'port' should be one of inner-tag, member"},
        {"vlan 5 member", "removed", "{}", "a port is missing"},
        {"vlan 5 member 1/1 9/9", "removed", "{}", "'9/9' must be a port"},
        {"port 1/1 pep 3 priority 1-9", "changed", "{}", "priorities are 1 to 8"},
        {"port 1/1 pep 1-2 priority 1", "changed", "{}", "one provider edge port at a time"},
        {"port 1/1 pep 17 priority 1", "changed", "{}", "provider edge ports are 1 to 16"},
        {"port 1/1 vid 4095", "removed", "{}", "VID translations are 1 to 4094"},
        {"port 1/1 default 3", "removed", "{}", "'3' is too much"},
        {"ports 1/1", "removed", "{}", "'ports' should be one of switch, node, management, or port or vlan"},
        {"", "removed", "{}", "'' is no object"},
        {"port 1/1 cvid 5", "added", "{}", "has no \"sVid\""},
        {"port 1/1 cvid 5", "added", R"({"sVid": {"after": 7}})", "none"},
        {"port 1/1 cvid 5", "changed", R"({"sVid": {"before": 7}})", "has no \"after\""},
        {"port 1/1 cvid 5", "changed", R"({"sVid": 7})", "must be an object {\"before\""},
        {"port 1/1 cvid 5", "changed", R"({"cVid": {"after": 7}})", "is no member"},
        {"port 1/1", "changed", R"({"pvdi": {"after": 7}})", "\"pvid\" is"},
        {"port 1/1", "changed", R"({"pvid": {"befor": 1, "after": 4}})", "\"before\" is"},
        {"port 1/1", "changed", R"({"pvid": {"after": 4095}})", "must be a number from 1 to 4094"},
        {"port 1/1", "changed", R"({"pvid": {"before": "x", "after": 4}})", "is no value of this member"},
        {"port 1/1", "changed", R"({"pvid": {"before": 4095, "after": 4}})", "none"}, // the region may hold it
        {"vlan 5", "changed", R"({"name": {"before": "a"}, "nameBytes": {"after": "ff"}})", "none"},
        {"vlan 5", "changed", R"({"nameBytes": {"after": "fg"}})", "pairs of hexadecimal digits"},
        {"vlan 5", "changed", R"([])", "must be an object"},
    };
    for (const auto& [object, kind, members, expected] : kCases) {
        const std::string text = std::string(R"({"schema": 1, "differences": [{"object": ")") + object +
                                 R"(", "change": ")" + kind + R"(", "members": )" + members + "}]}";
        EXPECT_NE(std::string::npos, FirstFault(text).find(expected)) << text << ": " << FirstFault(text);
    }
}

TEST(ChangesTest, WhatIsNotAsExpectedIsRefusedUnlessForced)
{
    Configuration node = RandomNode(1);
    const std::string vlan = std::to_string(node.aVlan[3].sMoid.wVlanId);
    uint16_t absent = 2;
    while (
        std::any_of(node.aVlan.begin(), node.aVlan.end(), [&](const auto& v) { return v.sMoid.wVlanId == absent; })) {
        ++absent;
    }
    const std::string none = std::to_string(absent);
    // Object, kind, members; what is refused, and whether --force does it nevertheless.
    const std::tuple<std::string, const char*, const char*, std::string, bool> kCases[] = {
        {"vlan " + vlan, "added", "{}", "is there already", true},
        {"vlan " + none, "removed", "{}", "is not there", true},
        {"vlan " + none, "changed", R"({"name": {"after": "x"}})", "is not there", true},
        {"vlan " + vlan, "changed", R"({"name": {"before": "x", "after": "y"}})", "and was to be \"x\"", true},
        {"vlan " + vlan, "removed", R"({"name": {"before": "x"}})", "and was to be \"x\"", true},
        {"vlan " + none + " member 1/1", "added", R"({"membership": {"after": 1}})", "there is no vlan " + none, false},
        {"vlan " + none + " member 1/1", "changed", R"({"membership": {"after": 1}})", "member 1/1: ", false},
        {"switch", "removed", "{}", "is always there", false},
    };
    for (const auto& [object, kind, members, expected, isForced] : kCases) {
        const std::string text = R"({"schema": 1, "event": "change", "object": ")" + object + R"(", "change": ")" +
                                 kind + R"(", "members": )" + members + "}";
        const ParsedChanges parsed = ParseChanges(text, 1, Strictness::kStrict);
        ASSERT_EQ(0U, parsed.nrOfErrors) << text;
        for (const Conflicts conflicts : {Conflicts::kRefuse, Conflicts::kOverride}) {
            std::string refusal;
            try {
                Apply(node, parsed.changes, conflicts);
            } catch (const Failure& failure) {
                refusal = failure.what();
            }
            const bool isRefused = conflicts == Conflicts::kRefuse || !isForced;
            EXPECT_EQ(isRefused, refusal.find(expected) != std::string::npos) << text << ": " << refusal;
        }
    }
    const auto twice = ParseChanges(R"({"schema": 1, "differences": [{"object": "vlan 9-11", "change": "removed"},
                                       {"object": "vlan 10", "change": "removed"}]})",
                                    1, Strictness::kStrict);
    EXPECT_THROW(Apply(node, twice.changes, Conflicts::kOverride), Failure);
}

TEST(ChangesTest, ValuesAreCutOutOfPiecesOfAnyLength)
{
    const std::string text = "\n{\"a\": \"}\\\"{\"}\n\n [[1],\n2] rubbish {\n{\"b\":1}{\"open\": \"";
    for (std::size_t length = 1; length <= text.size(); ++length) {
        ValueCutter cutter;
        std::string found;
        for (std::size_t at = 0; at <= text.size(); at += length) {
            cutter.Add(text.substr(at, length));
            while (const auto value = cutter.Next(at + length > text.size())) {
                found += std::to_string(value->line) + value->text + '|';
            }
        }
        EXPECT_EQ("2{\"a\": \"}\\\"{\"}|4[[1],\n2]|5rubbish {|6{\"b\":1}|6{\"open\": \"|", found) << length;
    }
}

} // namespace
