// faults.cpp - collecting the faults of a configuration file.
#include "file/faults.h"

#include "file/parse.h"

#include "objects/notation.h"

#include <utility>

namespace tool {

namespace {

constexpr std::size_t kValueTextMax = 60;

// A value as a person should see it in a message: short, in one line and without control characters.
std::string ShortText(const nlohmann::ordered_json& value)
{
    if (value.is_object()) {
        return value.empty() ? "{}" : "{...}";
    }
    if (value.is_array()) {
        return value.empty() ? "[]" : "[...]";
    }
    if (value.is_string()) {
        const auto& text = value.get_ref<const std::string&>();
        const bool isLong = text.size() > kValueTextMax;
        const nlohmann::ordered_json start(isLong ? text.substr(0, kValueTextMax) : text);
        return start.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace) + (isLong ? "..." : "");
    }
    return value.dump();
}

bool IsPlainMember(std::string_view member)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_$";
    return member.size() <= kValueTextMax && member.find_first_not_of(kPlain) == std::string_view::npos;
}

} // namespace

std::string Path::Text() const
{
    if (m_parent == nullptr) {
        return "$";
    }
    std::string text = m_parent->Text();
    if (m_member.empty()) {
        return text + '[' + std::to_string(m_index) + ']';
    }
    if (IsPlainMember(m_member)) {
        return text.append(1, '.').append(m_member);
    }
    return text + '[' + ShortText(std::string(m_member)) + ']';
}

void Faults::Error(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule)
{
    Add(path, pValue, rule, Severity::kError);
}

void Faults::Doubt(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule)
{
    Add(path, pValue, rule, IsLenient() ? Severity::kWarning : Severity::kError);
}

void Faults::Add(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule, Severity severity)
{
    const bool isKept = m_kept.size() < kFaultsKept; // a path becomes text only where somebody reads it
    Add(isKept ? path.Text() : "", isKept && pValue != nullptr ? ShortText(*pValue) : "", std::string(rule), severity);
}

void Faults::DoubtAt(const std::function<std::string()>& path, std::string value, std::string rule)
{
    const Severity severity = IsLenient() ? Severity::kWarning : Severity::kError;
    Add(m_kept.size() < kFaultsKept ? path() : "", std::move(value), std::move(rule), severity);
}

void Faults::Add(std::string path, std::string value, std::string rule, Severity severity)
{
    ++(severity == Severity::kError ? m_nrOfErrors : m_nrOfWarnings);
    if (m_kept.size() < kFaultsKept) {
        m_kept.push_back({std::move(path), std::move(value), std::move(rule), "", 0, severity});
    }
}

void Faults::Unknown(const Path& object, const std::string& member, std::span<const std::string_view> known)
{
    std::string rule = "is no member of this object";
    if (m_kept.size() < kFaultsKept) { // else nobody reads the suggestion
        const std::string_view meant = NearestWord(member, known);
        rule += meant.empty() ? "" : "; \"" + std::string(meant) + "\" is";
    }
    Add(Path(object, member).Text(), "", std::move(rule), Severity::kError);
}

void Faults::NoJson(std::size_t line, std::string place, std::string rule)
{
    ++m_nrOfErrors;
    m_kept.push_back({std::move(place), "", std::move(rule), "", line, Severity::kError});
}

void Faults::MoveTo(ParseResult& result)
{
    result.faults = std::move(m_kept);
    result.nrOfErrors = m_nrOfErrors;
    result.nrOfWarnings = m_nrOfWarnings;
}

} // namespace tool
