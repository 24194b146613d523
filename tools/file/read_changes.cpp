// read_changes.cpp - from the text of a change set to changes, with all faults of the text.
#include "file/read_changes.h"

#include "file/document.h"
#include "file/locate.h"
#include "file/parse.h"
#include "file/read_fields.h"
#include "objects/failure.h"
#include "objects/notation.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace tool {

namespace {

constexpr std::size_t kObjectNameMax = 200; // shown of a name in a message

// Members that an object {...} cannot have.
void RefuseOthers(const Json& object, std::span<const std::string_view> known, const Path& path, Faults& faults)
{
    if (object.is_object()) {
        for (const auto& member : object.get_ref<const Json::object_t&>()) {
            if (std::find(known.begin(), known.end(), member.first) == known.end()) {
                faults.Unknown(path, member.first, known);
            }
        }
    }
}

class ChangeReader {
public:
    explicit ChangeReader(Faults& faults) : m_faults(faults) {}

    void Read(const Json& change, const Path& path, ParsedChanges& parsed)
    {
        try {
            const Json* const pName = FindMember(change, "object");
            const Json* const pKind = FindMember(change, "change");
            const auto kind = KindOf(pKind);
            if (!kind) {
                m_faults.Error(Path(path, "change"), pKind, "must be \"added\", \"removed\" or \"changed\"");
            }
            if (pName == nullptr || !pName->is_string()) {
                m_faults.Error(Path(path, "object"), pName, "must be the name of an object, such as \"vlan 10\"");
                return;
            }
            ObjectChange read{
                kind.value_or(DifferenceKind::kChanged), ParseObject(pName->get_ref<const std::string&>()), {}};
            ReadMembers(FindMember(change, "members"), Path(path, "members"), read);
            if (read.kind == DifferenceKind::kAdded) {
                RequireMembers(read, path);
            }
            parsed.changes.push_back(std::move(read));
        } catch (const Failure& failure) { // of the name
            m_faults.Error(Path(path, "object"), nullptr, failure.what());
        }
    }

private:
    static std::optional<DifferenceKind> KindOf(const Json* pKind)
    {
        for (const auto kind : {DifferenceKind::kAdded, DifferenceKind::kRemoved, DifferenceKind::kChanged}) {
            if (pKind != nullptr && *pKind == KindText(kind)) {
                return kind;
            }
        }
        return std::nullopt;
    }

    void ReadMembers(const Json* pMembers, const Path& path, ObjectChange& change)
    {
        if (pMembers == nullptr) {
            return;
        }
        if (!pMembers->is_object()) {
            m_faults.Error(path, pMembers, "must be an object {...}");
            return;
        }
        for (const auto& [name, value] : pMembers->get_ref<const Json::object_t&>()) {
            ReadMember(name, value, path, change);
        }
    }

    // The field of a member; a name has two members.
    static const Field* FieldNamed(const ObjectClass& row, std::string_view name, bool& isBytes)
    {
        for (const Field& field : row.fields) {
            isBytes = field.notation == Notation::kName && name == std::string(field.name).append(kBytesSuffix);
            if ((field.name == name || isBytes) && !IsKey(row, field)) {
                return &field;
            }
        }
        return nullptr;
    }

    void ReadMember(const std::string& name, const Json& value, const Path& membersPath, ObjectChange& change)
    {
        const Path path(membersPath, name);
        const ObjectClass& row = *change.objects.pRow;
        bool isBytes = false;
        const Field* const pField = FieldNamed(row, name, isBytes);
        if (pField == nullptr) {
            std::vector<std::string_view> known;
            for (const Field& field : row.fields) {
                if (!IsKey(row, field)) {
                    known.push_back(field.name);
                }
            }
            m_faults.Unknown(membersPath, name, known);
            return;
        }
        static constexpr std::string_view kSides[] = {"before", "after"};
        RefuseOthers(value, kSides, path, m_faults);
        const Json* const pBefore = FindMember(value, "before");
        const Json* const pAfter = FindMember(value, "after");
        const bool hasBefore = pBefore != nullptr && !pBefore->is_null();
        const bool hasAfter = pAfter != nullptr && !pAfter->is_null();
        if (!hasBefore && !hasAfter) {
            m_faults.Error(path, &value, "must be an object {\"before\": VALUE, \"after\": VALUE}");
            return;
        }
        if (change.kind != DifferenceKind::kRemoved && !hasAfter && pField->notation != Notation::kName) {
            m_faults.Error(path, &value, "has no \"after\"");
            return;
        }
        MemberBytes member{pField, "", ""};
        Faults before(Strictness::kLenient); // the region may hold what makes no sense
        if (hasBefore && change.kind != DifferenceKind::kAdded &&
            !ReadValue(before, Path(path, "before"), *pBefore, isBytes, change, member.before, *pField)) {
            m_faults.Error(Path(path, "before"), pBefore, "is no value of this member");
        }
        if (hasAfter && change.kind != DifferenceKind::kRemoved) {
            ReadValue(m_faults, Path(path, "after"), *pAfter, isBytes, change, member.after, *pField);
        }
        change.members.push_back(std::move(member));
    }

    static bool ReadValue(Faults& faults, const Path& path, const Json& value, bool isBytes, const ObjectChange& change,
                          std::string& bytes, Field field)
    {
        std::string record = change.objects.records.front();
        if (isBytes) {
            field.notation = Notation::kBytes;
        }
        if (field.name == RowOf(Class::kPriority).fields[0].name) {
            field.sameAs = kNoField; // which is no more than its default
        }
        if (!ReadField(faults, path, value, field, record.data())) {
            return false;
        }
        bytes = record.substr(field.offset, field.size);
        return true;
    }

    void RequireMembers(const ObjectChange& change, const Path& path)
    {
        for (const Field& field : change.objects.pRow->fields) {
            const bool isThere = std::any_of(change.members.begin(), change.members.end(),
                                             [&field](const MemberBytes& member) { return member.pField == &field; });
            if (field.presence == Presence::kRequired && !isThere && !IsKey(*change.objects.pRow, field)) {
                m_faults.Error(path, nullptr, "has no \"" + std::string(field.name) + "\"");
            }
        }
    }

    Faults& m_faults;
};

void Check(const Json& document, std::span<const std::string_view> known, Faults& faults)
{
    const Json* const pSchema = FindMember(document, "schema");
    if (pSchema == nullptr || *pSchema != kSchema) {
        faults.Error(Path(Path(), "schema"), pSchema, "must be 1, the number of the format that this version reads");
    }
    RefuseOthers(document, known, Path(), faults);
}

void ReadSet(const Json& document, const Json& list, Faults& faults, ParsedChanges& parsed)
{
    static constexpr std::string_view kKnown[] = {"schema", "$schema", "description", "before",
                                                  "after",  "applied", "differences"};
    Check(document, kKnown, faults);
    const Path root;
    const Path path(root, "differences");
    if (!list.is_array()) {
        faults.Error(path, &list, "must be a list [...]");
        return;
    }
    static constexpr std::string_view kMembers[] = {"object", "change", "members"};
    ChangeReader reader(faults);
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Path changePath(path, i);
        if (!list[i].is_object()) {
            faults.Error(changePath, &list[i], "must be an object {...}");
            continue;
        }
        reader.Read(list[i], changePath, parsed);
        RefuseOthers(list[i], kMembers, changePath, faults);
    }
}

// Of what watch prints, only changes change something.
void ReadEvent(const Json& document, const Json& event, Faults& faults, ParsedChanges& parsed)
{
    if (event == "start" || event == "period" || event == "restart") {
        return;
    }
    static constexpr std::string_view kKnown[] = {"schema", "time", "event", "object", "change", "members", "more"};
    Check(document, kKnown, faults);
    if (event != "change") {
        faults.Error(Path(Path(), "event"), &event, "must be \"change\", \"start\", \"period\" or \"restart\"");
        return;
    }
    parsed.isEvent = true;
    ChangeReader(faults).Read(document, Path(), parsed);
    if (const Json* const pMore = FindMember(document, "more")) {
        if (pMore->is_number_unsigned()) {
            parsed.nrOfMore = pMore->get<std::size_t>();
        } else {
            faults.Error(Path(Path(), "more"), pMore, "must be how many changes follow that belong to this one");
        }
    }
}

void ReadChanges(const Json& document, Faults& faults, ParsedChanges& parsed)
{
    if (const Json* const pError = FindMember(document, "error")) {
        const Json* const pMessage = FindMember(*pError, "message");
        faults.Error(Path(), nullptr,
                     "no change set, but the report of a command that failed: " +
                         (pMessage == nullptr ? "" : pMessage->dump(-1, ' ', true)));
    } else if (const Json* const pList = FindMember(document, "differences")) {
        ReadSet(document, *pList, faults, parsed);
    } else if (const Json* const pEvent = FindMember(document, "event")) {
        ReadEvent(document, *pEvent, faults, parsed);
    } else if (FindMember(document, "switch") != nullptr || FindMember(document, "vlans") != nullptr) {
        faults.Error(Path(), nullptr, "a configuration, and no change set: 'piovios load' takes it");
    } else {
        faults.Error(Path(), &document, "no change set: it has no \"differences\", and is no line of watch");
    }
}

// The name of the object that a path of a change set leads into.
std::string ObjectOf(const Json& document, const std::string& path)
{
    std::size_t index = 0;
    const Json* const pList = FindMember(document, "differences");
    const bool isInList = std::sscanf(path.c_str(), "$.differences[%zu]", &index) == 1 && pList != nullptr &&
                          pList->is_array() && index < pList->size();
    const Json* const pName = FindMember(isInList ? (*pList)[index] : document, "object");
    const auto* const pText = pName == nullptr ? nullptr : pName->get_ptr<const std::string*>();
    return pText != nullptr && pText->size() <= kObjectNameMax && IsPlainText(*pText) ? *pText : "";
}

} // namespace

ParsedChanges ParseChanges(std::string_view text, std::size_t line, Strictness strictness)
{
    ParsedChanges parsed;
    Faults faults(strictness);
    Json document;
    if (ReadDocument(text, faults, document)) {
        ReadChanges(document, faults, parsed);
    }
    ParseResult result;
    faults.MoveTo(result);
    parsed.faults = std::move(result.faults);
    parsed.nrOfErrors = result.nrOfErrors;
    parsed.nrOfWarnings = result.nrOfWarnings;
    for (ConfigFault& fault : parsed.faults) {
        if (fault.line == 0) {
            fault.line = LineOf(text, fault.path);
            fault.object = ObjectOf(document, fault.path);
        }
        fault.line += line - 1;
    }
    return parsed;
}

std::optional<ValueCutter::Value> ValueCutter::Next(bool isEnd)
{
    const std::size_t start = std::min(m_text.find_first_not_of(" \t\r\n"), m_text.size());
    if (m_seen == 0) {
        m_line += static_cast<std::size_t>(
            std::count(m_text.begin(), m_text.begin() + static_cast<std::ptrdiff_t>(start), '\n'));
        m_text.erase(0, start);
    }
    if (m_text.empty()) {
        return std::nullopt;
    }
    const bool isOpened = m_text[0] == '{' || m_text[0] == '['; // else it is no document, and ends with its line
    std::size_t end = isOpened ? std::string::npos : m_text.find('\n');
    for (; isOpened && end == std::string::npos && m_seen < m_text.size(); ++m_seen) {
        const char character = m_text[m_seen];
        if (m_isInString) {
            m_isInString = character != '"';
            m_seen += character == '\\' ? 1 : 0;
        } else if (character == '"') {
            m_isInString = true;
        } else if (character == '{' || character == '[') {
            ++m_depth;
        } else if ((character == '}' || character == ']') && --m_depth == 0) {
            end = m_seen + 1;
        }
    }
    if (end == std::string::npos && m_text.size() > kTextSizeMax) {
        throw Failure(kBadInput, "a change set is at most " + std::to_string(kTextSizeMax >> 20U) + " MiB long");
    }
    if (end == std::string::npos && !isEnd) {
        return std::nullopt;
    }
    Value value{m_text.substr(0, end), m_line};
    m_line += static_cast<std::size_t>(std::count(value.text.begin(), value.text.end(), '\n'));
    m_text.erase(0, end);
    m_seen = 0;
    m_depth = 0;
    m_isInString = false;
    return value;
}

} // namespace tool
