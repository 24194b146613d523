// to_json.cpp - a configuration in the JSON format.
#include "objects/catalogue.h"
#include "objects/configuration.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tool {

namespace {

// Appends without looking for a member of that name: the names of an object are known to differ.
void Append(Json& object, std::string_view name, Json value)
{
    object.get_ref<Json::object_t&>().emplace_back(std::string(name), std::move(value));
}

void AppendUnlessEmpty(Json& object, std::string_view name, Json value)
{
    if (!value.empty()) {
        Append(object, name, std::move(value));
    }
}

template <class Record>
Json ObjectOf(std::span<const Field> fields, const Record& sRecord)
{
    Json object = Json::object();
    WriteFields(fields, &sRecord, object);
    return object;
}

template <class Record>
Json ListOf(std::span<const Field> fields, std::span<const Record> records)
{
    Json list = Json::array();
    for (const Record& sRecord : records) {
        list.push_back(ObjectOf(fields, sRecord));
    }
    return list;
}

Json MembersOf(std::span<const SwctVlanPortRecord> vlanPorts)
{
    Json tagged = Json::array();
    Json untagged = Json::array();
    Json other = Json::object();
    for (const SwctVlanPortRecord& sVlanPort : vlanPorts) {
        std::string port = PortText(sVlanPort.sMoid.bSlot, sVlanPort.sMoid.bPort);
        switch (sVlanPort.sBody.dwMembership) {
        case SWCT_MEMBERSHIP_TAGGED:
            tagged.push_back(std::move(port));
            break;
        case SWCT_MEMBERSHIP_UNTAGGED:
            untagged.push_back(std::move(port));
            break;
        default:
            Append(other, port, +sVlanPort.sBody.dwMembership);
        }
    }
    Json members = Json::object();
    AppendUnlessEmpty(members, member::kTagged, std::move(tagged));
    AppendUnlessEmpty(members, member::kUntagged, std::move(untagged));
    AppendUnlessEmpty(members, member::kOther, std::move(other));
    return members;
}

Json VlanOf(const Configuration& configuration, const SwctVlanRecord& sVlan)
{
    Json vlan = ObjectOf(kVlanFields, sVlan);
    const SwctVlanIfInnerTagRecord sDefaultTag = DefaultInnerTag(sVlan.sMoid.wVlanId);
    const auto* const pTag = Find(configuration.aInnerTag, KeyOf(sDefaultTag.sMoid));
    if (pTag == nullptr) {
        Append(vlan, member::kInnerTag, nullptr);
    } else if (!IsSame(*pTag, sDefaultTag)) {
        Append(vlan, member::kInnerTag, ObjectOf(kInnerTagFields, *pTag));
    }
    AppendUnlessEmpty(vlan, member::kMembers, MembersOf(OfFirstKey(configuration.aVlanPort, sVlan.sMoid.wVlanId)));
    return vlan;
}

// Eight regenerated priorities; empty when each is the received one.
Json PrioritiesOf(std::span<const SwctServicePriorityRegenerationRecord> records)
{
    Json priorities = Json::array();
    bool isIdentity = true;
    for (const SwctServicePriorityRegenerationRecord& sRecord : records) {
        priorities.push_back(+sRecord.sBody.dwRegeneratedPriority);
        isIdentity &= sRecord.sBody.dwRegeneratedPriority == sRecord.sMoid.dwPriority;
    }
    return isIdentity ? Json::array() : priorities;
}

Json PepsOf(const Configuration& configuration, uint32_t portNumber)
{
    Json peps = Json::array();
    for (const SwctProviderEdgePortRecord& sPep : OfFirstKey(configuration.aPep, portNumber)) {
        Json pep = ObjectOf(kPepFields, sPep);
        AppendUnlessEmpty(
            pep, member::kPriorities,
            PrioritiesOf(Between(configuration.aServicePriority, MakeKey(portNumber, 1, sPep.sMoid.wPepIndex),
                                 MakeKey(portNumber, SWCT_PRIORITY_MAX, sPep.sMoid.wPepIndex))));
        peps.push_back(std::move(pep));
    }
    return peps;
}

// One object for all C-VIDs that are registered in the same way, in the order of the lowest of them.
Json RegistrationsOf(std::span<const SwctCVidRegistrationRecord> records)
{
    struct Group {
        const SwctCVidRegistrationRecord* pFirst;
        std::vector<VidRange> cVids;
    };
    std::vector<Group> groups;
    std::map<std::string_view, std::size_t> groupOfBody;
    for (const SwctCVidRegistrationRecord& sRecord : records) {
        // A body that names another C-VID than its key stands alone; in the others the C-VID is not compared.
        const bool isOdd = sRecord.sBody.wCVid != sRecord.sMoid.wCVid;
        constexpr std::size_t kCommon = offsetof(SwctCVidRegistration, wSvid);
        const std::string_view body(reinterpret_cast<const char*>(&sRecord.sBody) + (isOdd ? 0 : kCommon),
                                    sizeof(sRecord.sBody) - (isOdd ? 0 : kCommon));
        const auto [it, isNew] = groupOfBody.try_emplace(body, groups.size());
        if (isNew || isOdd) {
            it->second = groups.size();
            groups.push_back({&sRecord, {}});
        }
        AppendVid(groups[it->second].cVids, sRecord.sMoid.wCVid);
    }
    Json registrations = Json::array();
    for (const Group& group : groups) {
        const bool isOne = group.cVids.size() == 1 && group.cVids[0].first == group.cVids[0].last;
        Json registration = Json::object();
        Append(registration, member::kCVids, isOne ? Json(group.cVids[0].first) : Json(VidListText(group.cVids)));
        WriteFields(kCVidRegistrationFields, group.pFirst, registration);
        registrations.push_back(std::move(registration));
    }
    return registrations;
}

// Null for a port of which there is nothing.
Json PortOf(const Configuration& configuration, uint8_t slot, uint8_t port)
{
    const uint32_t number = PortNumber(slot, port);
    const uint64_t key = MakeKey(number, 0);
    const SwctSwitchPortRecord sNoPort{{SWCT_CLASS_SWITCH_PORT, slot, port}, {}};
    const auto* const pPort = Find(configuration.aPort, key);
    Json object = ObjectOf(kPortFields, pPort == nullptr ? sNoPort : *pPort);
    const std::size_t nrOfFields = object.size();
    AppendUnlessEmpty(object, member::kPeps, PepsOf(configuration, number));
    AppendUnlessEmpty(object, member::kRegistrations,
                      RegistrationsOf(OfFirstKey(configuration.aCVidRegistration, number)));
    if (const auto* const pDefault = Find(configuration.aDefaultRegistration, key)) {
        Append(object, member::kDefaultRegistration, ObjectOf(kDefaultRegistrationFields, *pDefault));
    }
    AppendUnlessEmpty(object, member::kTranslations,
                      ListOf(kVidTranslationFields, OfFirstKey(configuration.aVidTranslation, number)));
    if (const auto* const pQinQ = Find(configuration.aQinQ, key)) {
        Append(object, member::kQinQ, ObjectOf(kQinQFields, *pQinQ));
    }
    return pPort == nullptr && object.size() == nrOfFields ? Json() : object;
}

} // namespace

Json ToJson(const Configuration& configuration)
{
    Json document = Json::object();
    Append(document, member::kSchemaNumber, kSchema);
    Append(document, member::kSwitch, ObjectOf(kSwitchFields, configuration.sSwitch));
    WriteFields({&kHrlbField, 1}, &configuration.dwHrlb, document);
    Json ports = Json::array();
    ForEachPort([&](uint8_t slot, uint8_t port) {
        Json object = PortOf(configuration, slot, port);
        if (!object.is_null()) {
            ports.push_back(std::move(object));
        }
    });
    Append(document, member::kPorts, std::move(ports));
    Json vlans = Json::array();
    for (const SwctVlanRecord& sVlan : configuration.aVlan) {
        vlans.push_back(VlanOf(configuration, sVlan));
    }
    Append(document, member::kVlans, std::move(vlans));
    return document;
}

} // namespace tool
