#include "commands/faults_text.h"

#include "file/text_file.h"
#include "objects/failure.h"

#include <cstdio>
#include <fmt/format.h>

namespace tool {

namespace {

// What a path says beyond the object: ".sVid" of "$.ports[2].providerEdgePorts[0].sVid".
std::string_view MemberOf(std::string_view path)
{
    const std::size_t end = path.rfind(']');
    return end == std::string_view::npos ? path : path.substr(end + 1);
}

} // namespace

std::string FaultText(const std::string& file, const ConfigFault& fault)
{
    std::string text = FileName(file);
    if (fault.line != 0) {
        text += fmt::format(": line {}", fault.line);
    }
    if (!fault.object.empty()) {
        text += ", " + fault.object;
        const std::string_view member = MemberOf(fault.path);
        text += member.size() > 1 ? fmt::format(": {}", member.substr(1)) : "";
    } else if (fault.path != "$") {
        text += (fault.line != 0 ? ", " : ": ") + fault.path;
    }
    return text + (fault.value.empty() ? "" : ": " + fault.value) + ": " + fault.rule;
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
