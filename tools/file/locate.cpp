// locate.cpp - where in a file an object or a fault is.
#include "file/locate.h"

#include "file/read_fields.h"
#include "objects/notation.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace tool {

namespace {

constexpr std::size_t kPathTextMax = 60; // a longer key is none

// The next step of a path: ".member", "[3]" or ["a member"].
struct PathStep {
    std::string_view member;
    std::optional<std::size_t> index;
};

std::optional<PathStep> NextStep(std::string_view& path)
{
    PathStep step;
    if (path.starts_with('.')) {
        const std::size_t end = std::min(path.find_first_of(".[", 1), path.size());
        step.member = path.substr(1, end - 1);
        path.remove_prefix(end);
        return step;
    }
    const std::size_t end = path.starts_with("[\"") ? path.find("\"]") : path.find(']');
    if (!path.starts_with('[') || end == std::string_view::npos) {
        return std::nullopt;
    }
    if (path[1] == '"') {
        step.member = path.substr(2, end - 2);
        path.remove_prefix(end + 2);
        return step;
    }
    std::size_t index = 0;
    std::from_chars(path.data() + 1, path.data() + end, index);
    step.index = index;
    path.remove_prefix(end + 1);
    return step;
}

// Reads over values of a text that is known to be JSON.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    std::size_t Position() const
    {
        return m_position;
    }

    // Goes to the value of a step; false, at the value itself, when it has none.
    bool Enter(const PathStep& step)
    {
        const char open = Peek();
        if (open != (step.index ? '[' : '{')) {
            return false;
        }
        const std::size_t start = m_position++;
        for (std::size_t index = 0; Peek() != ']' && Peek() != '}'; ++index) {
            bool isIt = step.index == index;
            if (!step.index) {
                const std::size_t nameStart = m_position;
                SkipString();
                isIt = m_text.substr(nameStart + 1, m_position - nameStart - 2) == step.member;
                Peek();
                ++m_position; // the colon
            }
            Peek();
            if (isIt) {
                return true;
            }
            SkipValue();
            if (Peek() == ',') {
                ++m_position;
            }
            if (m_position >= m_text.size()) {
                break;
            }
        }
        m_position = start;
        return false;
    }

private:
    char Peek()
    {
        m_position = std::min(m_text.find_first_not_of(" \t\r\n", m_position), m_text.size());
        return m_position < m_text.size() ? m_text[m_position] : ']';
    }
    void SkipString()
    {
        for (++m_position; m_position < m_text.size() && m_text[m_position] != '"'; ++m_position) {
            m_position += m_text[m_position] == '\\' ? 1U : 0U;
        }
        ++m_position;
    }
    void SkipValue()
    {
        std::size_t depth = 0;
        do {
            const char character = Peek();
            if (character == '"') {
                SkipString();
                continue;
            }
            const bool isOpening = character == '{' || character == '[';
            const bool isClosing = character == '}' || character == ']';
            if (!isOpening && !isClosing && character != ',' && character != ':') {
                m_position = std::min(m_text.find_first_of(",:]} \t\r\n", m_position), m_text.size());
                continue;
            }
            depth += isOpening ? 1U : 0U;
            depth -= isClosing ? 1U : 0U;
            ++m_position;
        } while (depth > 0 && m_position < m_text.size());
    }

    std::string_view m_text;
    std::size_t m_position = 0;
};

std::string TextOf(const Json* pValue)
{
    return pValue == nullptr ? "" : pValue->is_string() ? pValue->get<std::string>() : pValue->dump();
}

const ObjectClass* RowOfMember(std::string_view name)
{
    const auto rows = Catalogue();
    const auto row = std::find_if(rows.begin(), rows.end(), [name](const ObjectClass& r) { return r.member == name; });
    return row == rows.end() || name.empty() ? nullptr : &*row;
}

// Whether a list of C-VIDs has one.
bool HasCVid(const Json* pCVids, unsigned cVid)
{
    std::vector<VidRange> ranges;
    return ParseVidList(TextOf(pCVids), ranges) && std::any_of(ranges.begin(), ranges.end(), [cVid](const VidRange& r) {
               return cVid >= r.first && cVid <= r.last;
           });
}

// "[3]" behind the path of the element of a list whose member has a value.
std::string ElementPath(const Json& parent, const std::string& path, const ObjectClass& row, const std::string& key)
{
    const Json* const pList = FindMember(parent, row.member);
    if (pList == nullptr || !pList->is_array()) {
        return path;
    }
    const std::string listPath = path + '.' + std::string(row.member);
    for (std::size_t index = 0; index < pList->size(); ++index) {
        const Json& element = (*pList)[index];
        const bool isIt = row.id == Class::kRegistration
                              ? HasCVid(FindMember(element, member::kCVids), static_cast<unsigned>(std::stoul(key)))
                              : TextOf(FindMember(element, row.fields[0].name)) == key;
        if (isIt) {
            return listPath + '[' + std::to_string(index) + ']';
        }
    }
    return listPath;
}

std::string MemberPath(const Json& vlan, const std::string& path, const std::string& port)
{
    const Json* const pMembers = FindMember(vlan, RowOf(Class::kMember).member);
    const std::string membersPath = path + '.' + std::string(RowOf(Class::kMember).member);
    for (const std::string_view list : {member::kTagged, member::kUntagged}) {
        const Json* const pList = pMembers == nullptr ? nullptr : FindMember(*pMembers, list);
        for (std::size_t index = 0; pList != nullptr && index < pList->size(); ++index) {
            if (TextOf(&(*pList)[index]) == port) {
                return membersPath + '.' + std::string(list) + '[' + std::to_string(index) + ']';
            }
        }
    }
    return membersPath + ".other[\"" + port + "\"]";
}

const Json* ValueAt(const Json& document, std::string_view path)
{
    const Json* pValue = &document;
    path.remove_prefix(1);
    while (const auto step = NextStep(path)) {
        const bool isIndex = step->index && pValue->is_array() && *step->index < pValue->size();
        pValue = isIndex ? &(*pValue)[*step->index] : step->index ? nullptr : FindMember(*pValue, step->member);
        if (pValue == nullptr) {
            break;
        }
    }
    return pValue;
}

} // namespace

std::string PathOf(const Json& document, const ObjectClass& row, const void* pRecord)
{
    if (row.keys == Keys::kNone) {
        return row.member.empty() ? "$" : "$." + std::string(row.member);
    }
    const auto* const pKey = static_cast<const uint8_t*>(pRecord) + sizeof(uint16_t);
    const bool isOfPort = row.keys == Keys::kPort;
    const ObjectClass& parentRow = RowOf(isOfPort ? Class::kPort : Class::kVlan);
    const std::string parentKey = isOfPort ? PortText(pKey[0], pKey[1]) : std::to_string(pKey[0] | pKey[1] << 8U);
    const std::string parentPath = ElementPath(document, "$", parentRow, parentKey);
    const Json* const pParent = ValueAt(document, parentPath);
    if (row.id == parentRow.id || pParent == nullptr) {
        return parentPath;
    }
    if (row.id == Class::kMember) {
        return MemberPath(*pParent, parentPath, LastKeyText(row, pRecord));
    }
    return row.isList ? ElementPath(*pParent, parentPath, row, LastKeyText(row, pRecord))
                      : parentPath + '.' + std::string(row.member);
}

std::string ObjectAt(const Json& document, std::string_view path)
{
    if (!path.starts_with('$')) {
        return "";
    }
    std::string name;
    const Json* pValue = &document;
    const ObjectClass* pRow = nullptr;
    const ObjectClass& memberRow = RowOf(Class::kMember);
    bool isInMembers = false;
    path.remove_prefix(1);
    while (const auto step = NextStep(path)) {
        if (!step->index) {
            pValue = FindMember(*pValue, step->member);
            pRow = RowOfMember(step->member);
            isInMembers |= step->member == memberRow.member;
            if (pValue != nullptr && pRow != nullptr && !pRow->isList) {
                name += (name.empty() ? "" : " ") + std::string(pRow->label);
            }
        } else {
            pValue = pValue->is_array() && *step->index < pValue->size() ? &(*pValue)[*step->index] : nullptr;
            if (pValue != nullptr && pRow != nullptr && pValue->is_object()) {
                const std::string key = TextOf(
                    FindMember(*pValue, pRow->id == Class::kRegistration ? member::kCVids : pRow->fields[0].name));
                const std::string_view label =
                    pRow->label.empty() ? std::string_view(pRow->id == Class::kPort ? "port" : "vlan") : pRow->label;
                if (!key.empty() && IsPlainText(key) && key.size() <= kPathTextMax) {
                    name.append(name.empty() ? "" : " ").append(label).append(" ").append(key);
                }
            } else if (pValue != nullptr && isInMembers && IsPlainText(TextOf(pValue))) {
                name.append(" ").append(memberRow.label).append(" ").append(TextOf(pValue));
            }
        }
        if (pValue == nullptr) {
            break;
        }
    }
    return name;
}

std::size_t LineOf(std::string_view text, std::string_view path)
{
    if (!path.starts_with('$')) {
        return 0;
    }
    Scanner scanner(text);
    path.remove_prefix(1);
    for (auto step = NextStep(path); step && scanner.Enter(*step); step = NextStep(path)) {
    }
    const std::string_view before = text.substr(0, scanner.Position());
    return static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
}

} // namespace tool
