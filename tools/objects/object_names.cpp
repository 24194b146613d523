// object_names.cpp - from the name of objects to records with their keys.
#include "objects/changes.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <cstring>
#include <fmt/format.h>

namespace tool {

namespace {

constexpr std::string_view kExamples = "names are as diff prints them: \"vlan 10\", \"vlan 10 member 1/1\", "
                                       "\"port 1/3\", \"port 1/3 cvid 10-19\", \"switch\"";

using Words = std::vector<std::string>;

Words WordsOf(std::string_view text)
{
    Words words;
    for (std::size_t at = 0; (at = text.find_first_not_of(' ', at)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        words.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

// The numbers of a list such as 10-19,30, each once and in order.
std::vector<uint32_t> Numbers(const std::string& list, uint32_t max, std::string_view what)
{
    std::vector<uint32_t> numbers;
    const VlanSet set = ParseVlans(list);
    for (uint32_t number = 1; number < set.size(); ++number) {
        if (set[number] && number > max) {
            throw Failure(kBadInput, fmt::format("'{}': {} are 1 to {}", list, what, max));
        }
        if (set[number]) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

class NameReader {
public:
    explicit NameReader(std::string_view name) : m_name(name), m_words(WordsOf(name)) {}

    NamedObjects Read()
    {
        if (Peek() == "port") {
            ++m_next;
            m_port = ParsePort(Take("a port SLOT/PORT"));
            ReadLabel(Keys::kPort, Class::kPort);
        } else if (Peek() == "vlan") {
            ++m_next;
            if (m_words.size() > 2) {
                m_vlan = ParseVlan(Take("a VLAN id"));
            }
            ReadLabel(Keys::kVlan, Class::kVlan);
        } else {
            ReadLabel(Keys::kNone, Class::kSwitch);
        }
        std::vector<std::string> records = ReadLastKeys();
        if (m_next != m_words.size()) {
            Fail(fmt::format("'{}' is too much", m_words[m_next]));
        }
        return {m_pRow, std::move(records)};
    }

private:
    [[noreturn]] void Fail(const std::string& why) const
    {
        throw Failure(kBadInput, fmt::format("'{}' is no object: {}; {}", m_name.substr(0, 60), why, kExamples));
    }

    std::string Peek() const
    {
        return m_next < m_words.size() ? m_words[m_next] : "";
    }
    std::string Take(const char* pWhat)
    {
        if (m_next == m_words.size()) {
            Fail(fmt::format("{} is missing", pWhat));
        }
        return m_words[m_next++];
    }

    // The word behind the first key; without one it is the port or the VLAN itself.
    void ReadLabel(Keys keys, Class own)
    {
        if (keys != Keys::kNone && (m_next == m_words.size() || (keys == Keys::kVlan && m_vlan == 0))) {
            m_pRow = &RowOf(own);
            return;
        }
        const std::string word = Peek();
        const bool isPriority = word == "pep" && m_words.size() > m_next + 2;
        if (isPriority) {
            ++m_next;
            const auto peps = Numbers(Take(""), SWCT_PEP_MAX, "provider edge ports");
            if (peps.size() != 1) {
                Fail("priorities are named for one provider edge port at a time");
            }
            m_pep = static_cast<uint16_t>(peps.front());
        }
        std::string known;
        for (const ObjectClass& row : Catalogue()) {
            if (row.keys == keys && !row.label.empty() && (row.id == Class::kPriority) == isPriority) {
                if (Peek() == row.label) {
                    ++m_next;
                    m_pRow = &row;
                    return;
                }
                known += fmt::format("{}{}", known.empty() ? "" : ", ", row.label);
            }
        }
        Fail(fmt::format("'{}' should be one of {}{}", Peek(), known, keys == Keys::kNone ? ", or port or vlan" : ""));
    }

    std::vector<std::string> ReadLastKeys()
    {
        std::vector<std::string> records;
        if (m_pRow->keyField == kNoField) {
            records.push_back(NewRecord(0, {}));
            return records;
        }
        const Field& key = m_pRow->fields[m_pRow->keyField];
        if (key.notation == Notation::kPort) {
            std::array<bool, kNrOfPorts> isNamed{};
            do {
                isNamed[IndexOf(ParsePort(Take("a port")))] = true;
            } while (m_next < m_words.size());
            for (const Port port : AllPorts()) {
                if (isNamed[IndexOf(port)]) {
                    records.push_back(NewRecord(0, port));
                }
            }
        } else {
            const std::string list = Take("a number, or a list such as 10-19,30,");
            for (const uint32_t number : Numbers(list, key.StorableRange().max, m_pRow->many)) {
                records.push_back(NewRecord(number, {}));
            }
        }
        return records;
    }

    // The class and the first key lie in front of all others.
    std::string NewRecord(uint32_t lastNumber, Port lastPort) const
    {
        static const Configuration kNone;
        std::string record(m_pRow->records(kNone).size, '\0');
        const auto put = [&record](std::size_t at, const auto& value) {
            std::memcpy(record.data() + at, &value, sizeof(value));
        };
        if (m_pRow->keys != Keys::kNone) {
            put(0, m_pRow->wClass);
        }
        if (m_pRow->keys == Keys::kPort) {
            put(offsetof(SwctPortMoid, bSlot), m_port.slot);
            put(offsetof(SwctPortMoid, bPort), m_port.port);
        } else if (m_pRow->keys == Keys::kVlan) {
            put(offsetof(SwctVlanMoid, wVlanId), m_vlan);
        }
        if (m_pRow->id == Class::kPriority) {
            put(offsetof(SwctServicePriorityRegenerationMoid, wPepIndex), m_pep);
        }
        if (m_pRow->keyField != kNoField) {
            const Field& key = m_pRow->fields[m_pRow->keyField];
            if (key.notation == Notation::kPort) {
                put(key.offset, lastPort.slot);
                put(key.offset + 1, lastPort.port);
            } else {
                std::memcpy(record.data() + key.offset, &lastNumber, key.size);
            }
        }
        SetDefaults(m_pRow->fields, record.data());
        Complete(record, lastNumber, lastPort);
        return record;
    }

    // What every new object of a class has beside the defaults of its members.
    void Complete(std::string& record, uint32_t lastNumber, Port lastPort) const
    {
        if (m_pRow->id == Class::kVlan) {
            auto& sVlan = *reinterpret_cast<SwctVlanRecord*>(record.data());
            sVlan.sBody.dwRowState = 1;
            fmt::format_to_n(sVlan.sBody.acName, sizeof(sVlan.sBody.acName) - 1, "vlan-{}", lastNumber);
        } else if (m_pRow->id == Class::kMember) {
            auto& sMember = *reinterpret_cast<SwctVlanPortRecord*>(record.data());
            sMember.sBody = {lastPort.slot, lastPort.port, 1, 0};
        }
    }

    std::string_view m_name;
    Words m_words;
    std::size_t m_next = 0;
    const ObjectClass* m_pRow = nullptr;
    Port m_port;
    uint16_t m_vlan = 0;
    uint16_t m_pep = 0;
};

} // namespace

NamedObjects ParseObject(std::string_view name)
{
    return NameReader(name).Read();
}

bool IsKey(const ObjectClass& row, const Field& field)
{
    return field.notation == Notation::kPort ||
           (row.keyField != kNoField && &field == row.fields.data() + row.keyField);
}

} // namespace tool
