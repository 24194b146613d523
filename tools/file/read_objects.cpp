// read_objects.cpp - the objects of a configuration document, each by the table of its class.
//
// An object whose key cannot be read goes on being read for its other faults; its records have slot or VLAN id 0 then,
// and are never used, for the file is refused.
#include "file/parsed.h"
#include "objects/catalogue.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <string>
#include <string_view>

namespace tool {

namespace {

constexpr std::string_view kTwice = "is there twice";

const Json* FindMember(const Json& object, std::string_view name)
{
    if (!object.is_object()) {
        return nullptr;
    }
    const auto& members = object.get_ref<const Json::object_t&>();
    const auto it =
        std::find_if(members.begin(), members.end(), [name](const auto& member) { return member.first == name; });
    return it == members.end() ? nullptr : &it->second;
}

// Calls action(element, its path, its index) for each element of a list that an object may have.  A list with more
// elements than there can be objects is read that far.
template <class Action>
void ForEach(Faults& faults, const Path& path, const Json& object, std::string_view name, std::size_t nrOfElementsMax,
             Action action)
{
    const Json* const pList = FindMember(object, name);
    if (pList == nullptr) {
        return;
    }
    const Path listPath(path, name);
    if (!pList->is_array()) {
        faults.Error(listPath, pList, "must be a list [...]");
        return;
    }
    if (pList->size() > nrOfElementsMax) {
        faults.Error(listPath, pList, "has more than " + std::to_string(nrOfElementsMax) + " elements");
    }
    for (std::size_t index = 0; index < std::min(pList->size(), nrOfElementsMax); ++index) {
        action((*pList)[index], Path(listPath, index), index);
    }
}

// A record with its defaults and the keys of the object that it lies in.
template <class Record, class Moid>
Record NewRecord(std::span<const Field> fields, const Moid& sMoid)
{
    Record sRecord{};
    SetDefaults(fields, &sRecord);
    sRecord.sMoid = sMoid;
    return sRecord;
}

// Marks a number as seen; that it was already is a fault.  0 stands for a key that could not be read.
template <std::size_t kSize>
void MarkSeen(Faults& faults, std::bitset<kSize>& seen, std::size_t number, const Path& path, const Json* pValue)
{
    if (number != 0 && seen[number]) {
        faults.Error(path, pValue, kTwice);
    }
    seen.set(number);
}

using PortSet = std::bitset<PortNumber(SWCT_SLOT_MAX, SWCT_PORT_MAX) + 1U>; // of PortNumber

// ---- VLANs ----

class VlanReader {
public:
    VlanReader(Faults& faults, Parsed& parsed) : m_faults(faults), m_parsed(parsed) {}

    void Read(const Json& object, const Path& path, std::size_t place)
    {
        m_place = place;
        static constexpr std::string_view kChildren[] = {member::kInnerTag, member::kMembers};
        auto sVlan = NewRecord<SwctVlanRecord>(kVlanFields, SwctVlanMoid{SWCT_CLASS_VLAN, 0});
        ReadFields(m_faults, path, object, kVlanFields, &sVlan, kChildren);
        m_vlanId = sVlan.sMoid.wVlanId;
        sVlan.sBody.dwRowState = 1; // the class stores nothing else
        if (FindMember(object, "name") == nullptr && FindMember(object, "nameBytes") == nullptr) {
            const std::string name = "vlan-" + std::to_string(m_vlanId);
            name.copy(sVlan.sBody.acName, sizeof(sVlan.sBody.acName) - 1);
        }
        MarkSeen(m_faults, m_seen, m_vlanId, Path(path, "id"), FindMember(object, "id"));
        m_parsed.vlans.push_back({sVlan, place, 0});
        ReadInnerTag(object, path);
        ReadMembers(object, path);
    }

private:
    void ReadInnerTag(const Json& vlan, const Path& path)
    {
        const Json* const pTag = FindMember(vlan, member::kInnerTag);
        if (pTag != nullptr && pTag->is_null()) {
            return;
        }
        SwctVlanIfInnerTagRecord sTag = DefaultInnerTag(m_vlanId);
        if (pTag != nullptr) {
            ReadFields(m_faults, Path(path, member::kInnerTag), *pTag, kInnerTagFields, &sTag);
        }
        m_parsed.innerTags.push_back({sTag, m_place, 0});
    }

    void ReadMembers(const Json& vlan, const Path& path)
    {
        const Json* const pMembers = FindMember(vlan, member::kMembers);
        if (pMembers == nullptr) {
            return;
        }
        static constexpr std::string_view kLists[] = {member::kTagged, member::kUntagged, member::kOther};
        const Path membersPath(path, member::kMembers);
        ReadFields(m_faults, membersPath, *pMembers, {}, nullptr, kLists); // names what is unknown
        m_members.reset();
        ReadMemberList(*pMembers, membersPath, member::kTagged, SWCT_MEMBERSHIP_TAGGED);
        ReadMemberList(*pMembers, membersPath, member::kUntagged, SWCT_MEMBERSHIP_UNTAGGED);
        ReadOtherMembers(*pMembers, Path(membersPath, member::kOther));
    }

    void ReadMemberList(const Json& members, const Path& path, std::string_view name, uint32_t membership)
    {
        ForEach(m_faults, path, members, name, kPortsMax,
                [&](const Json& port, const Path& portPath, std::size_t place) {
                    const auto* const pText = port.get_ptr<const std::string*>();
                    AddMember(pText == nullptr ? "" : *pText, membership, portPath, &port, place);
                });
    }

    void ReadOtherMembers(const Json& members, const Path& path)
    {
        const Json* const pOther = FindMember(members, member::kOther);
        if (pOther == nullptr) {
            return;
        }
        if (!pOther->is_object()) {
            m_faults.Error(path, pOther, "must be an object {\"SLOT/PORT\": MEMBERSHIP, ...}");
            return;
        }
        std::size_t place = 0;
        for (const auto& [port, value] : pOther->get_ref<const Json::object_t&>()) {
            uint32_t membership = 0;
            const Path portPath(path, port);
            ReadNumber(m_faults, portPath, value, kMembershipField, membership);
            AddMember(port, membership, portPath, nullptr, place++);
        }
    }

    void AddMember(std::string_view text, uint32_t membership, const Path& path, const Json* pValue, std::size_t place)
    {
        SwctVlanPortRecord sMember{{SWCT_CLASS_VLAN_PORT, m_vlanId, 0, 0}, {}};
        if (!ParsePort(text, sMember.sMoid.bSlot, sMember.sMoid.bPort)) {
            m_faults.Error(path, pValue, kPortRule);
            return;
        }
        sMember.sBody = {sMember.sMoid.bSlot, sMember.sMoid.bPort, 1, membership};
        MarkSeen(m_faults, m_members, PortNumber(sMember.sMoid.bSlot, sMember.sMoid.bPort), path, pValue);
        m_parsed.vlanPorts.push_back({sMember, m_place, place});
    }

    Faults& m_faults;
    Parsed& m_parsed;
    std::bitset<SWCT_VLAN_MAX + 1> m_seen;
    // Of the present VLAN.
    uint16_t m_vlanId = 0;
    std::size_t m_place = 0;
    PortSet m_members;
};

// ---- Ports ----

class PortReader {
public:
    PortReader(Faults& faults, Parsed& parsed) : m_faults(faults), m_parsed(parsed) {}

    void Read(const Json& object, const Path& path, std::size_t place)
    {
        static constexpr std::string_view kChildren[] = {
            member::kPeps, member::kRegistrations, member::kDefaultRegistration, member::kTranslations, member::kQinQ};
        auto sPort = NewRecord<SwctSwitchPortRecord>(kPortFields, SwctPortMoid{SWCT_CLASS_SWITCH_PORT, 0, 0});
        ReadFields(m_faults, path, object, kPortFields, &sPort, kChildren);
        m_place = place;
        m_slot = sPort.sMoid.bSlot;
        m_port = sPort.sMoid.bPort;
        MarkSeen(m_faults, m_seen, PortNumber(m_slot, m_port), Path(path, "port"), FindMember(object, "port"));
        m_parsed.ports.push_back({sPort, place, 0});

        m_peps.reset();
        m_cVids.reset();
        m_localVids.reset();
        ForEach(m_faults, path, object, member::kPeps, SWCT_PEP_MAX,
                [this](const auto& pep, const Path& pepPath, std::size_t inner) { ReadPep(pep, pepPath, inner); });
        ForEach(m_faults, path, object, member::kRegistrations, SWCT_PB_VID_MAX,
                [this](const auto& registration, const Path& registrationPath, std::size_t inner) {
                    ReadRegistration(registration, registrationPath, inner);
                });
        ReadSingle(object, path, member::kDefaultRegistration, kDefaultRegistrationFields,
                   SWCT_CLASS_DEFAULT_CVID_REGISTRATION, m_parsed.defaultRegistrations);
        ForEach(m_faults, path, object, member::kTranslations, SWCT_PB_VID_MAX,
                [this](const auto& translation, const Path& translationPath, std::size_t inner) {
                    ReadTranslation(translation, translationPath, inner);
                });
        ReadSingle(object, path, member::kQinQ, kQinQFields, SWCT_CLASS_QINQ_PORT, m_parsed.qinqPorts);
    }

private:
    // An object that a port has at most one of.
    template <class Record>
    void ReadSingle(const Json& port, const Path& path, std::string_view name, std::span<const Field> fields,
                    uint16_t wClass, std::vector<Placed<Record>>& records)
    {
        if (const Json* const pObject = FindMember(port, name)) {
            auto sRecord = NewRecord<Record>(fields, SwctPortMoid{wClass, m_slot, m_port});
            ReadFields(m_faults, Path(path, name), *pObject, fields, &sRecord);
            records.push_back({sRecord, m_place, 0});
        }
    }

    void ReadPep(const Json& object, const Path& path, std::size_t inner)
    {
        static constexpr std::string_view kChildren[] = {member::kPriorities};
        auto sPep = NewRecord<SwctProviderEdgePortRecord>(
            kPepFields, SwctProviderEdgePortMoid{SWCT_CLASS_PROVIDER_EDGE_PORT, m_slot, m_port, 0});
        if (ReadFields(m_faults, path, object, kPepFields, &sPep, kChildren)) {
            MarkSeen(m_faults, m_peps, sPep.sMoid.wPepIndex, Path(path, "index"), FindMember(object, "index"));
        }
        m_parsed.peps.push_back({sPep, m_place, inner});
        ReadPriorities(object, path, sPep.sMoid.wPepIndex, inner);
    }

    void ReadPriorities(const Json& pep, const Path& path, uint16_t pepIndex, std::size_t inner)
    {
        std::array<uint32_t, SWCT_PRIORITY_MAX> regenerated = {1, 2, 3, 4, 5, 6, 7, 8};
        const Json* const pList = FindMember(pep, member::kPriorities);
        ForEach(m_faults, path, pep, member::kPriorities, regenerated.size(),
                [&](const Json& value, const Path& valuePath, std::size_t index) {
                    ReadNumber(m_faults, valuePath, value, kRegeneratedPriorityField, regenerated[index]);
                });
        if (pList != nullptr && pList->is_array() && pList->size() < regenerated.size()) {
            m_faults.Error(Path(path, member::kPriorities), pList,
                           "must be eight priorities, for the received priorities 1 to 8");
        }
        for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
            const SwctServicePriorityRegenerationMoid sMoid{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, m_slot, m_port,
                                                            pepIndex, priority};
            m_parsed.priorities.push_back({{sMoid, {priority, regenerated[priority - 1]}}, m_place, inner});
        }
    }

    void ReadRegistration(const Json& object, const Path& path, std::size_t inner)
    {
        static constexpr std::string_view kKey[] = {member::kCVids};
        const std::vector<VidRange> ranges = ReadCVids(object, path);
        auto sRegistration = NewRecord<SwctCVidRegistrationRecord>(
            kCVidRegistrationFields, SwctCVidRegistrationMoid{SWCT_CLASS_CVID_REGISTRATION, m_slot, m_port,
                                                              ranges.empty() ? uint16_t{0} : ranges[0].first});
        ReadFields(m_faults, path, object, kCVidRegistrationFields, &sRegistration, kKey);
        const bool isOdd = sRegistration.sBody.wCVid != sRegistration.sMoid.wCVid;
        const bool isOne = ranges.size() == 1 && ranges[0].first == ranges[0].last;
        if (isOdd && !isOne) {
            m_faults.Error(Path(path, "recordCVid"), FindMember(object, "recordCVid"), "goes with one C-VID only");
        }
        for (const VidRange& range : ranges) {
            for (uint16_t cVid = range.first; cVid <= range.last; ++cVid) {
                sRegistration.sMoid.wCVid = cVid;
                sRegistration.sBody.wCVid = isOdd ? +sRegistration.sBody.wCVid : cVid;
                m_parsed.registrations.push_back({sRegistration, m_place, inner});
            }
        }
    }

    // The C-VIDs of a registration that no earlier one has.
    std::vector<VidRange> ReadCVids(const Json& object, const Path& path)
    {
        std::vector<VidRange> ranges;
        const Path cVidsPath(path, member::kCVids);
        const Json* const pCVids = FindMember(object, member::kCVids);
        if (pCVids == nullptr) {
            m_faults.Error(path, nullptr, "has no \"" + std::string(member::kCVids) + "\"");
            return {};
        }
        const bool isText = pCVids->is_string();
        if (!(isText || pCVids->is_number_unsigned()) ||
            !ParseVidList(isText ? pCVids->get_ref<const std::string&>() : pCVids->dump(), ranges)) {
            m_faults.Error(cVidsPath, pCVids,
                           "must be C-VIDs from 1 to 4094: a number, or a list with ranges such as \"10-19,30\"");
            return {};
        }
        for (const VidRange& range : ranges) {
            for (std::size_t cVid = range.first; cVid <= range.last; ++cVid) {
                if (m_cVids[cVid]) {
                    m_faults.Error(cVidsPath, pCVids, "C-VID " + std::to_string(cVid) + " is there twice");
                    return {};
                }
                m_cVids.set(cVid);
            }
        }
        return ranges;
    }

    void ReadTranslation(const Json& object, const Path& path, std::size_t inner)
    {
        auto sTranslation = NewRecord<SwctVidTranslationRecord>(
            kVidTranslationFields, SwctVidTranslationMoid{SWCT_CLASS_VID_TRANSLATION, m_slot, m_port, 0});
        if (ReadFields(m_faults, path, object, kVidTranslationFields, &sTranslation)) {
            MarkSeen(m_faults, m_localVids, sTranslation.sMoid.wLocalVid, Path(path, "localVid"),
                     FindMember(object, "localVid"));
        }
        m_parsed.translations.push_back({sTranslation, m_place, inner});
    }

    Faults& m_faults;
    Parsed& m_parsed;
    PortSet m_seen;
    // Of the present port.
    std::size_t m_place = 0;
    uint8_t m_slot = 0;
    uint8_t m_port = 0;
    std::bitset<SWCT_PEP_MAX + 1> m_peps;
    std::bitset<SWCT_PB_VID_MAX + 1> m_cVids;
    std::bitset<SWCT_PB_VID_MAX + 1> m_localVids;
};

// What the class stores of a bridge name, whose last byte is always zero; names of VLANs are stored as they are.
void EndAtFirstZero(char (&acName)[SWCT_VLAN_NAME_SIZE])
{
    char* const pEnd = std::find(std::begin(acName), std::end(acName) - 1, '\0');
    std::fill(pEnd, std::end(acName), '\0');
}

} // namespace

Parsed ReadObjects(const Json& document, Faults& faults)
{
    Parsed parsed;
    const Path root;
    static constexpr std::string_view kMembers[] = {member::kSchemaFile, member::kDescription, member::kSchemaNumber,
                                                    member::kSwitch,     member::kPorts,       member::kVlans};
    SetDefaults({&kHrlbField, 1}, &parsed.dwHrlb);
    ReadFields(faults, root, document, {&kHrlbField, 1}, &parsed.dwHrlb, kMembers);
    const Json* const pSchema = FindMember(document, member::kSchemaNumber);
    if (pSchema != nullptr && *pSchema != kSchema) {
        faults.Error(Path(root, member::kSchemaNumber), pSchema, "is no format that this version reads; 1 is");
    }
    parsed.sSwitch = DefaultSwitch();
    const Json* const pSwitch = FindMember(document, member::kSwitch);
    if (pSwitch != nullptr) {
        ReadFields(faults, Path(root, member::kSwitch), *pSwitch, kSwitchFields, &parsed.sSwitch);
    }
    EndAtFirstZero(parsed.sSwitch.acBridgeName);
    PortReader ports(faults, parsed);
    ForEach(faults, root, document, member::kPorts, kPortsMax,
            [&ports](const auto& object, const Path& path, std::size_t place) { ports.Read(object, path, place); });
    VlanReader vlans(faults, parsed);
    ForEach(faults, root, document, member::kVlans, SWCT_VLAN_MAX,
            [&vlans](const auto& object, const Path& path, std::size_t place) { vlans.Read(object, path, place); });
    return parsed;
}

} // namespace tool
