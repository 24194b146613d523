#include "commands/faults_text.h"

#include "file/text_file.h"
#include "objects/failure.h"

#include <cstdio>
#include <fmt/format.h>

namespace tool {

namespace {

// What a path says beyond the object: "sVid" of "$.ports[2].providerEdgePorts[0].sVid", "pvid" of
// "$.differences[3].members.pvid.after" and of "$.members.pvid.after".
std::string MemberOf(std::string_view path)
{
    const std::size_t end = path.rfind(']');
    std::string member(end == std::string_view::npos ? path.substr(1) : path.substr(end + 1));
    constexpr std::string_view kMembers = ".members.";
    if (member.starts_with(kMembers)) {
        member = member.substr(kMembers.size() - 1, member.find('.', kMembers.size()) - kMembers.size() + 1);
    }
    return member.empty() ? "" : member.substr(1);
}

} // namespace

std::string FaultText(const std::string& file, const ConfigFault& fault)
{
    std::string place = fault.line != 0 ? fmt::format("line {}", fault.line) : "";
    const bool isPath = fault.object.empty() && fault.path != "$";
    if (!fault.object.empty() || isPath) {
        place += place.empty() ? "" : ", ";
        place += isPath ? fault.path : fault.object;
    }
    const std::string member = fault.object.empty() ? "" : MemberOf(fault.path);
    std::string text;
    for (const std::string& part : {FileName(file), place, member, fault.value, fault.rule}) {
        text += text.empty() || part.empty() ? part : ": " + part;
    }
    return text;
}

Json FaultJson(const ConfigFault& fault)
{
    return {{"severity", fault.severity == Severity::kError ? "error" : "warning"},
            {"line", fault.line == 0 ? Json() : Json(fault.line)},
            {"object", fault.object.empty() ? Json() : Json(fault.object)},
            {"path", fault.path},
            {"value", fault.value.empty() ? Json() : Json::parse(fault.value, nullptr, false)},
            {"message", fault.rule}};
}

void PrintFaults(const std::string& file, const ParseResult& result)
{
    for (const ConfigFault& fault : result.faults) {
        const char* const pKind = fault.severity == Severity::kError ? "" : "warning: ";
        std::fprintf(stderr, "piovios: %s%s\n", pKind, FaultText(file, fault).c_str());
    }
    const std::size_t nrOfMore = result.nrOfErrors + result.nrOfWarnings - result.faults.size();
    if (nrOfMore > 0) {
        std::fprintf(stderr, "piovios: %s: %zu more faults of this kind\n", FileName(file).c_str(), nrOfMore);
    }
}

Configuration ReadConfigurationFile(const std::string& file)
{
    ParseResult result = Parse(ReadTextFile(file), Strictness::kLenient);
    for (const ConfigFault& fault : result.faults) {
        if (fault.severity == Severity::kError) {
            throw Failure(kBadInput, FaultText(file, fault));
        }
    }
    return std::move(result.configuration);
}

} // namespace tool
