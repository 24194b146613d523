// faults.cpp - collecting the faults of a configuration file.
#include "file/faults.h"

#include <algorithm>
#include <cctype>
#include <numeric>
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

// How many characters must be inserted, removed or replaced to make one word of the other, upper and lower case being
// the same.
std::size_t EditDistance(std::string_view left, std::string_view right)
{
    if (left.size() > kValueTextMax) {
        return left.size();
    }
    std::vector<std::size_t> row(right.size() + 1); // distances of the starts of 'right' to a start of 'left'
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const bool isSame =
                std::tolower(static_cast<unsigned char>(left[i])) == std::tolower(static_cast<unsigned char>(right[j]));
            const std::size_t replaced = diagonal + (isSame ? 0U : 1U);
            diagonal = std::exchange(row[j + 1], std::min({replaced, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
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
    ++(severity == Severity::kError ? m_nrOfErrors : m_nrOfWarnings);
    if (m_kept.size() < kFaultsKept) {
        m_kept.push_back({path.Text(), pValue == nullptr ? "" : ShortText(*pValue), std::string(rule), severity});
    }
}

void Faults::Unknown(const Path& object, const std::string& member, std::span<const std::string_view> known)
{
    std::string rule = "is no member of this object";
    if (m_kept.size() >= kFaultsKept) {
        ++m_nrOfErrors; // nobody reads the suggestion
        return;
    }
    std::size_t least = member.size() / 2 + 1; // more changes than half of it: another word
    for (const std::string_view candidate : known) {
        const std::size_t distance = EditDistance(member, candidate);
        if (distance < least) {
            least = distance;
            rule = "is no member of this object; \"" + std::string(candidate) + "\" is";
        }
    }
    Add(Path(object, member), nullptr, rule, Severity::kError);
}

void Faults::NoJson(std::string place, std::string rule)
{
    ++m_nrOfErrors;
    m_kept.push_back({std::move(place), "", std::move(rule), Severity::kError});
}

void Faults::MoveTo(ParseResult& result)
{
    result.faults = std::move(m_kept);
    result.nrOfErrors = m_nrOfErrors;
    result.nrOfWarnings = m_nrOfWarnings;
}

} // namespace tool
