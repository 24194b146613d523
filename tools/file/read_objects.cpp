// read_objects.cpp - the objects of a configuration document, one by one.
#include "file/read_objects.h"

#include "file/read_fields.h"
#include "objects/catalogue.h"
#include "objects/keys.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>

namespace tool {

namespace {

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

std::string_view MemberOf(Class id)
{
    return RowOf(id).member;
}

template <std::size_t kSize>
class Seen {
public:
    explicit Seen(Faults& faults) : m_faults(faults) {}

    // Marks a number as seen; that it was already is a fault.  0 stands for a key that could not be read.
    void Mark(std::size_t number, const Path& path, const Json* pValue)
    {
        if (number == 0) {
            m_faults.LoseKey();
        } else if (m_seen[number]) {
            m_faults.LoseKey();
            m_faults.Error(path, pValue, "is there twice");
        }
        m_seen.set(number);
    }
    void Reset()
    {
        m_seen.reset();
    }
    bool Has(std::size_t number) const
    {
        return m_seen[number];
    }

private:
    Faults& m_faults;
    std::bitset<kSize> m_seen;
};

using SeenPorts = Seen<PortNumber(SWCT_SLOT_MAX, SWCT_PORT_MAX) + 1U>; // of PortNumber
using SeenVids = Seen<SWCT_VLAN_MAX + 1>;

class VlanReader {
public:
    VlanReader(Faults& faults, Configuration& configuration)
        : m_faults(faults), m_configuration(configuration), m_seen(faults), m_members(faults)
    {
    }

    void Read(const Json& object, const Path& path)
    {
        static const std::string_view kChildren[] = {MemberOf(Class::kInnerTag), MemberOf(Class::kMember)};
        auto sVlan = NewRecord<SwctVlanRecord>(Class::kVlan, SwctVlanMoid{SWCT_CLASS_VLAN, 0});
        ReadFields(m_faults, path, object, RowOf(Class::kVlan).fields, &sVlan, kChildren);
        m_vlanId = sVlan.sMoid.wVlanId;
        sVlan.sBody.dwRowState = 1; // the class stores nothing else
        if (FindMember(object, "name") == nullptr && FindMember(object, "nameBytes") == nullptr) {
            const std::string name = "vlan-" + std::to_string(m_vlanId);
            name.copy(sVlan.sBody.acName, sizeof(sVlan.sBody.acName) - 1);
        }
        m_seen.Mark(m_vlanId, Path(path, "id"), FindMember(object, "id"));
        m_configuration.aVlan.push_back(sVlan);
        ReadInnerTag(object, path);
        ReadMembers(object, path);
    }

private:
    void ReadInnerTag(const Json& vlan, const Path& path)
    {
        const std::string_view name = MemberOf(Class::kInnerTag);
        const Json* const pTag = FindMember(vlan, name);
        if (pTag != nullptr && pTag->is_null()) {
            return;
        }
        SwctVlanIfInnerTagRecord sTag = DefaultInnerTag(m_vlanId);
        if (pTag != nullptr) {
            ReadFields(m_faults, Path(path, name), *pTag, RowOf(Class::kInnerTag).fields, &sTag);
        }
        m_configuration.aInnerTag.push_back(sTag);
    }

    void ReadMembers(const Json& vlan, const Path& path)
    {
        const std::string_view name = MemberOf(Class::kMember);
        const Json* const pMembers = FindMember(vlan, name);
        if (pMembers == nullptr) {
            return;
        }
        static constexpr std::string_view kLists[] = {member::kTagged, member::kUntagged, member::kOther};
        const Path membersPath(path, name);
        ReadFields(m_faults, membersPath, *pMembers, {}, nullptr, kLists); // names what is unknown
        m_members.Reset();
        ReadMemberList(*pMembers, membersPath, member::kTagged, SWCT_MEMBERSHIP_TAGGED);
        ReadMemberList(*pMembers, membersPath, member::kUntagged, SWCT_MEMBERSHIP_UNTAGGED);
        ReadOtherMembers(*pMembers, Path(membersPath, member::kOther));
    }

    void ReadMemberList(const Json& members, const Path& path, std::string_view name, uint32_t membership)
    {
        ForEach(m_faults, path, members, name, kPortsMax,
                [&](const Json& port, const Path& portPath, std::size_t /*index*/) {
                    const auto* const pText = port.get_ptr<const std::string*>();
                    AddMember(pText == nullptr ? "" : *pText, membership, portPath, &port);
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
        for (const auto& [port, value] : pOther->get_ref<const Json::object_t&>()) {
            uint32_t membership = 0;
            const Path portPath(path, port);
            ReadNumber(m_faults, portPath, value, FieldOf(Class::kMember, "membership"), membership);
            AddMember(port, membership, portPath, nullptr);
        }
    }

    void AddMember(std::string_view text, uint32_t membership, const Path& path, const Json* pValue)
    {
        SwctVlanPortRecord sMember{{SWCT_CLASS_VLAN_PORT, m_vlanId, 0, 0}, {}};
        if (!ParsePort(text, sMember.sMoid.bSlot, sMember.sMoid.bPort)) {
            m_faults.Error(path, pValue, kPortRule);
            m_faults.LoseKey();
            return;
        }
        sMember.sBody = {sMember.sMoid.bSlot, sMember.sMoid.bPort, 1, membership};
        m_members.Mark(PortNumber(sMember.sMoid.bSlot, sMember.sMoid.bPort), path, pValue);
        m_configuration.aVlanPort.push_back(sMember);
    }

    Faults& m_faults;
    Configuration& m_configuration;
    SeenVids m_seen;
    uint16_t m_vlanId = 0; // of the present VLAN
    SeenPorts m_members;
};

class PortReader {
public:
    PortReader(Faults& faults, Configuration& configuration)
        : m_faults(faults), m_configuration(configuration), m_seen(faults), m_peps(faults), m_cVids(faults),
          m_localVids(faults)
    {
    }

    void Read(const Json& object, const Path& path)
    {
        static const std::string_view kChildren[] = {MemberOf(Class::kPep), MemberOf(Class::kRegistration),
                                                     MemberOf(Class::kDefaultRegistration),
                                                     MemberOf(Class::kTranslation), MemberOf(Class::kQinQ)};
        auto sPort = NewRecord<SwctSwitchPortRecord>(Class::kPort, SwctPortMoid{SWCT_CLASS_SWITCH_PORT, 0, 0});
        ReadFields(m_faults, path, object, RowOf(Class::kPort).fields, &sPort, kChildren);
        m_slot = sPort.sMoid.bSlot;
        m_port = sPort.sMoid.bPort;
        const bool isPort = m_slot != 0 && m_port != 0;
        m_seen.Mark(isPort ? PortNumber(m_slot, m_port) : 0, Path(path, "port"), FindMember(object, "port"));
        m_configuration.aPort.push_back(sPort);

        m_peps.Reset();
        m_cVids.Reset();
        m_localVids.Reset();
        ForEach(m_faults, path, object, MemberOf(Class::kPep), SWCT_PEP_MAX,
                [this](const auto& pep, const Path& at, std::size_t /*index*/) { ReadPep(pep, at); });
        ForEach(m_faults, path, object, MemberOf(Class::kRegistration), SWCT_PB_VID_MAX,
                [this](const auto& registration, const Path& at, std::size_t /*index*/) {
                    ReadRegistration(registration, at);
                });
        ReadSingle(object, path, Class::kDefaultRegistration, m_configuration.aDefaultRegistration);
        ForEach(m_faults, path, object, MemberOf(Class::kTranslation), SWCT_PB_VID_MAX,
                [this](const auto& translation, const Path& at, std::size_t /*index*/) {
                    ReadTranslation(translation, at);
                });
        ReadSingle(object, path, Class::kQinQ, m_configuration.aQinQ);
    }

private:
    // An object that a port has at most one of.
    template <class Record>
    void ReadSingle(const Json& port, const Path& path, Class id, std::vector<Record>& records)
    {
        if (const Json* const pObject = FindMember(port, MemberOf(id))) {
            auto sRecord = NewRecord<Record>(id, SwctPortMoid{RowOf(id).wClass, m_slot, m_port});
            ReadFields(m_faults, Path(path, MemberOf(id)), *pObject, RowOf(id).fields, &sRecord);
            records.push_back(sRecord);
        }
    }

    void ReadPep(const Json& object, const Path& path)
    {
        static const std::string_view kChildren[] = {MemberOf(Class::kPriority)};
        auto sPep = NewRecord<SwctProviderEdgePortRecord>(
            Class::kPep, SwctProviderEdgePortMoid{SWCT_CLASS_PROVIDER_EDGE_PORT, m_slot, m_port, 0});
        const bool isUsable = ReadFields(m_faults, path, object, RowOf(Class::kPep).fields, &sPep, kChildren);
        m_peps.Mark(isUsable ? +sPep.sMoid.wPepIndex : 0, Path(path, "index"), FindMember(object, "index"));
        m_configuration.aPep.push_back(sPep);
        ReadPriorities(object, path, sPep.sMoid.wPepIndex);
    }

    void ReadPriorities(const Json& pep, const Path& path, uint16_t pepIndex)
    {
        std::array<uint32_t, SWCT_PRIORITY_MAX> regenerated = {1, 2, 3, 4, 5, 6, 7, 8};
        const std::string_view name = MemberOf(Class::kPriority);
        ForEach(m_faults, path, pep, name, regenerated.size(),
                [&](const Json& value, const Path& valuePath, std::size_t index) {
                    ReadNumber(m_faults, valuePath, value, RowOf(Class::kPriority).fields[0], regenerated[index]);
                });
        const Json* const pList = FindMember(pep, name);
        if (pList != nullptr && pList->is_array() && pList->size() < regenerated.size()) {
            m_faults.Error(Path(path, name), pList, "must be eight priorities, for the received priorities 1 to 8");
        }
        for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
            m_configuration.aServicePriority.push_back(
                {{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, m_slot, m_port, pepIndex, priority},
                 {priority, regenerated[priority - 1]}});
        }
    }

    void ReadRegistration(const Json& object, const Path& path)
    {
        static constexpr std::string_view kKey[] = {member::kCVids};
        const std::vector<VidRange> ranges = ReadCVids(object, path);
        auto sRegistration = NewRecord<SwctCVidRegistrationRecord>(
            Class::kRegistration, SwctCVidRegistrationMoid{SWCT_CLASS_CVID_REGISTRATION, m_slot, m_port,
                                                           ranges.empty() ? uint16_t{0} : ranges[0].first});
        const auto fields = RowOf(Class::kRegistration).fields.subspan(1); // the C-VID is a list
        ReadFields(m_faults, path, object, fields, &sRegistration, kKey);
        const bool isOdd = sRegistration.sBody.wCVid != sRegistration.sMoid.wCVid;
        const bool isOne = ranges.size() == 1 && ranges[0].first == ranges[0].last;
        if (isOdd && !isOne) {
            m_faults.Error(Path(path, "recordCVid"), FindMember(object, "recordCVid"), "goes with one C-VID only");
        }
        for (const VidRange& range : ranges) {
            for (uint16_t cVid = range.first; cVid <= range.last; ++cVid) {
                sRegistration.sMoid.wCVid = cVid;
                sRegistration.sBody.wCVid = isOdd ? +sRegistration.sBody.wCVid : cVid;
                m_configuration.aCVidRegistration.push_back(sRegistration);
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
            m_faults.LoseKey();
            return {};
        }
        const bool isText = pCVids->is_string();
        if (!(isText || pCVids->is_number_unsigned()) ||
            !ParseVidList(isText ? pCVids->get_ref<const std::string&>() : pCVids->dump(), ranges)) {
            m_faults.Error(cVidsPath, pCVids,
                           "must be C-VIDs from 1 to 4094: a number, or a list with ranges such as \"10-19,30\"");
            m_faults.LoseKey();
            return {};
        }
        for (const VidRange& range : ranges) {
            for (std::size_t cVid = range.first; cVid <= range.last; ++cVid) {
                if (m_cVids.Has(cVid)) {
                    m_faults.Error(cVidsPath, pCVids, "C-VID " + std::to_string(cVid) + " is there twice");
                    m_faults.LoseKey();
                    return {};
                }
                m_cVids.Mark(cVid, cVidsPath, pCVids);
            }
        }
        return ranges;
    }

    void ReadTranslation(const Json& object, const Path& path)
    {
        auto sTranslation = NewRecord<SwctVidTranslationRecord>(
            Class::kTranslation, SwctVidTranslationMoid{SWCT_CLASS_VID_TRANSLATION, m_slot, m_port, 0});
        const bool isUsable = ReadFields(m_faults, path, object, RowOf(Class::kTranslation).fields, &sTranslation);
        m_localVids.Mark(isUsable ? +sTranslation.sMoid.wLocalVid : 0, Path(path, "localVid"),
                         FindMember(object, "localVid"));
        m_configuration.aVidTranslation.push_back(sTranslation);
    }

    Faults& m_faults;
    Configuration& m_configuration;
    SeenPorts m_seen;
    // Of the present port.
    uint8_t m_slot = 0;
    uint8_t m_port = 0;
    Seen<SWCT_PEP_MAX + 1> m_peps;
    SeenVids m_cVids;
    SeenVids m_localVids;
};

// What the class stores of a bridge name, whose last byte is always zero; names of VLANs are stored as they are.
void EndAtFirstZero(char (&acName)[SWCT_VLAN_NAME_SIZE])
{
    char* const pEnd = std::find(std::begin(acName), std::end(acName) - 1, '\0');
    std::fill(pEnd, std::end(acName), '\0');
}

void ReadSchema(const Json& document, const Path& root, Faults& faults)
{
    const Json* const pSchema = FindMember(document, member::kSchemaNumber);
    if (pSchema == nullptr && document.is_object()) {
        faults.Error(root, nullptr, "has no \"schema\": a configuration begins with \"schema\": 1");
    } else if (pSchema != nullptr && *pSchema != kSchema) {
        faults.Error(Path(root, member::kSchemaNumber), pSchema, "is no format that this version reads; 1 is");
    }
}

template <class Record>
void ReadSingle(const Json& document, const Path& root, Class id, Record& sRecord, Faults& faults)
{
    if (const Json* const pObject = FindMember(document, MemberOf(id))) {
        ReadFields(faults, Path(root, MemberOf(id)), *pObject, RowOf(id).fields, &sRecord);
    }
}

} // namespace

Configuration ReadObjects(const Json& document, Faults& faults)
{
    Configuration configuration;
    const Path root;
    static const std::string_view kMembers[] = {
        member::kSchemaFile,          member::kDescription,   member::kSchemaNumber, MemberOf(Class::kSwitch),
        MemberOf(Class::kManagement), MemberOf(Class::kPort), MemberOf(Class::kVlan)};
    const auto nodeFields = RowOf(Class::kNode).fields;
    SetDefaults(nodeFields, &configuration.dwHrlb);
    ReadFields(faults, root, document, nodeFields, &configuration.dwHrlb, kMembers);
    ReadSchema(document, root, faults);
    configuration.sSwitch = DefaultSwitch();
    ReadSingle(document, root, Class::kSwitch, configuration.sSwitch, faults);
    EndAtFirstZero(configuration.sSwitch.acBridgeName);
    ReadSingle(document, root, Class::kManagement, configuration.sManagement, faults);
    PortReader ports(faults, configuration);
    ForEach(faults, root, document, MemberOf(Class::kPort), kPortsMax,
            [&ports](const auto& object, const Path& path, std::size_t /*index*/) { ports.Read(object, path); });
    VlanReader vlans(faults, configuration);
    ForEach(faults, root, document, MemberOf(Class::kVlan), SWCT_VLAN_MAX,
            [&vlans](const auto& object, const Path& path, std::size_t /*index*/) { vlans.Read(object, path); });

    SortByKey(configuration.aPort);
    // An entry of zeros is what a port that is not there has.
    std::erase_if(configuration.aPort, [](const auto& sPort) { return IsAllZero(sPort.sBody); });
    SortByKey(configuration.aVlan);
    SortByKey(configuration.aVlanPort);
    SortByKey(configuration.aInnerTag);
    SortByKey(configuration.aPep);
    SortByKey(configuration.aServicePriority);
    SortByKey(configuration.aCVidRegistration);
    SortByKey(configuration.aDefaultRegistration);
    SortByKey(configuration.aVidTranslation);
    SortByKey(configuration.aQinQ);
    std::erase_if(configuration.aDefaultRegistration, [](const auto& sRecord) { return IsAllZero(sRecord.sBody); });
    return configuration;
}

} // namespace tool
