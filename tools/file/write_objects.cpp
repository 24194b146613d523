// write_objects.cpp - a configuration in the JSON format.
#include "file/write_objects.h"

#include "file/parse.h"
#include "objects/keys.h"
#include "objects/records.h"

#include <map>

namespace tool {

namespace {

// The member of an object that has its name from the catalogue.
JsonWriter& Name(JsonWriter& writer, Class id)
{
    return writer.Name(RowOf(id).member);
}

template <class Record>
void WriteObject(JsonWriter& writer, Class id, const Record& sRecord)
{
    writer.Open('{');
    writer.Members(RowOf(id).fields, &sRecord);
    writer.Close();
}

// "other" has what is neither tagged nor untagged.
void WriteMembers(JsonWriter& writer, std::span<const SwctVlanPortRecord> members)
{
    const auto writeList = [&](std::string_view name, uint32_t membership) {
        writer.Name(name).Open('[');
        for (const SwctVlanPortRecord& sMember : members) {
            if (sMember.sBody.dwMembership == membership) {
                writer.Text(PortText(sMember.sMoid.bSlot, sMember.sMoid.bPort));
            }
        }
        writer.CloseUnlessEmpty();
    };
    Name(writer, Class::kMember).Open('{');
    writeList(member::kTagged, SWCT_MEMBERSHIP_TAGGED);
    writeList(member::kUntagged, SWCT_MEMBERSHIP_UNTAGGED);
    writer.Name(member::kOther).Open('{');
    for (const SwctVlanPortRecord& sMember : members) {
        if (sMember.sBody.dwMembership > SWCT_MEMBERSHIP_UNTAGGED) {
            writer.Name(PortText(sMember.sMoid.bSlot, sMember.sMoid.bPort)).Number(sMember.sBody.dwMembership);
        }
    }
    writer.CloseUnlessEmpty();
    writer.CloseUnlessEmpty();
}

// Nothing when each priority stays what it is.
void WritePriorities(JsonWriter& writer, std::span<const SwctServicePriorityRegenerationRecord> priorities)
{
    bool isIdentity = true;
    for (const SwctServicePriorityRegenerationRecord& sRecord : priorities) {
        isIdentity &= sRecord.sBody.dwRegeneratedPriority == sRecord.sMoid.dwPriority;
    }
    if (!isIdentity) {
        Name(writer, Class::kPriority).Open('[');
        for (const SwctServicePriorityRegenerationRecord& sRecord : priorities) {
            writer.Number(sRecord.sBody.dwRegeneratedPriority);
        }
        writer.Close();
    }
}

} // namespace

std::vector<RegistrationGroup> GroupRegistrations(std::span<const SwctCVidRegistrationRecord> registrationsOfPort)
{
    std::vector<RegistrationGroup> groups;
    std::map<std::string_view, std::size_t> groupOfBody;
    std::string_view lastBody;
    std::size_t last = 0;
    for (const SwctCVidRegistrationRecord& sRecord : registrationsOfPort) {
        // A body that names another C-VID than its key stands alone; in the others the C-VID is not compared.
        const bool isOdd = sRecord.sBody.wCVid != sRecord.sMoid.wCVid;
        constexpr std::size_t kCommon = offsetof(SwctCVidRegistration, wSvid);
        const std::string_view body(reinterpret_cast<const char*>(&sRecord.sBody) + (isOdd ? 0 : kCommon),
                                    sizeof(sRecord.sBody) - (isOdd ? 0 : kCommon));
        if (body != lastBody || isOdd) { // runs of the same are the rule
            const auto [it, isNew] = groupOfBody.try_emplace(body, groups.size());
            if (isNew || isOdd) {
                it->second = groups.size();
                groups.push_back({&sRecord, {}});
            }
            last = it->second;
            lastBody = isOdd ? std::string_view() : body;
        }
        AppendVid(groups[last].cVids, sRecord.sMoid.wCVid);
    }
    return groups;
}

void WriteRegistrations(JsonWriter& writer, const RegistrationGroup& group)
{
    const bool isOne = group.cVids.size() == 1 && group.cVids[0].first == group.cVids[0].last;
    writer.Name(member::kCVids);
    if (isOne) {
        writer.Number(group.cVids[0].first);
    } else {
        writer.Text(VidListText(group.cVids));
    }
    writer.Members(RowOf(Class::kRegistration).fields.subspan(1), group.pFirst);
}

void WritePep(JsonWriter& writer, const Configuration& configuration, const SwctProviderEdgePortRecord& sPep)
{
    writer.Members(RowOf(Class::kPep).fields, &sPep);
    const uint32_t port = PortNumber(sPep.sMoid.bSlot, sPep.sMoid.bPort);
    WritePriorities(writer, Between(configuration.aServicePriority, MakeKey(port, 1, sPep.sMoid.wPepIndex),
                                    MakeKey(port, SWCT_PRIORITY_MAX, sPep.sMoid.wPepIndex)));
}

void WritePort(JsonWriter& writer, const Configuration& configuration, const SwctSwitchPortRecord& sPort,
               bool withTranslations)
{
    const uint32_t number = PortNumber(sPort.sMoid.bSlot, sPort.sMoid.bPort);
    const uint64_t key = MakeKey(number, 0);
    writer.Members(RowOf(Class::kPort).fields, &sPort);
    Name(writer, Class::kPep).Open('[');
    for (const SwctProviderEdgePortRecord& sPep : OfFirstKey(configuration.aPep, number)) {
        writer.Open('{');
        WritePep(writer, configuration, sPep);
        writer.Close();
    }
    writer.CloseUnlessEmpty();
    Name(writer, Class::kRegistration).Open('[');
    for (const RegistrationGroup& group : GroupRegistrations(OfFirstKey(configuration.aCVidRegistration, number))) {
        writer.Open('{');
        WriteRegistrations(writer, group);
        writer.Close();
    }
    writer.CloseUnlessEmpty();
    if (const auto* const pDefault = Find(configuration.aDefaultRegistration, key)) {
        Name(writer, Class::kDefaultRegistration);
        WriteObject(writer, Class::kDefaultRegistration, *pDefault);
    }
    Name(writer, Class::kTranslation).Open('[');
    if (withTranslations) {
        for (const SwctVidTranslationRecord& sTranslation : OfFirstKey(configuration.aVidTranslation, number)) {
            WriteObject(writer, Class::kTranslation, sTranslation);
        }
    }
    writer.CloseUnlessEmpty();
    if (const auto* const pQinQ = Find(configuration.aQinQ, key)) {
        Name(writer, Class::kQinQ);
        WriteObject(writer, Class::kQinQ, *pQinQ);
    }
}

void WriteVlan(JsonWriter& writer, const Configuration& configuration, const SwctVlanRecord& sVlan)
{
    writer.Members(RowOf(Class::kVlan).fields, &sVlan);
    const SwctVlanIfInnerTagRecord sDefaultTag = DefaultInnerTag(sVlan.sMoid.wVlanId);
    const auto* const pTag = Find(configuration.aInnerTag, KeyOf(sDefaultTag.sMoid));
    if (pTag == nullptr) {
        Name(writer, Class::kInnerTag).Null();
    } else if (!IsSame(*pTag, sDefaultTag)) {
        Name(writer, Class::kInnerTag);
        WriteObject(writer, Class::kInnerTag, *pTag);
    }
    WriteMembers(writer, OfFirstKey(configuration.aVlanPort, sVlan.sMoid.wVlanId));
}

void WriteConfiguration(JsonWriter& writer, const Configuration& configuration)
{
    Name(writer, Class::kSwitch);
    WriteObject(writer, Class::kSwitch, configuration.sSwitch);
    writer.Members(RowOf(Class::kNode).fields, &configuration.dwHrlb);
    if (!IsAllZero(configuration.sManagement)) {
        Name(writer, Class::kManagement);
        WriteObject(writer, Class::kManagement, configuration.sManagement);
    }
    Name(writer, Class::kPort).Open('[');
    for (const Port port : AllPorts()) {
        const uint64_t key = MakeKey(PortNumber(port.slot, port.port), 0);
        const auto* const pPort = Find(configuration.aPort, key);
        // QinQ settings outlive their port.
        if (pPort != nullptr || Find(configuration.aQinQ, key) != nullptr) {
            writer.Open('{');
            WritePort(writer, configuration,
                      pPort != nullptr ? *pPort
                                       : SwctSwitchPortRecord{{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, {}});
            writer.Close();
        }
    }
    writer.Close();
    Name(writer, Class::kVlan).Open('[');
    for (const SwctVlanRecord& sVlan : configuration.aVlan) {
        writer.Open('{');
        WriteVlan(writer, configuration, sVlan);
        writer.Close();
    }
    writer.Close();
}

std::string ToText(const Configuration& configuration)
{
    JsonWriter writer;
    writer.Open('{');
    writer.Name(member::kSchemaNumber).Number(kSchema);
    WriteConfiguration(writer, configuration);
    writer.Close();
    return writer.Take();
}

std::string ToLine(const Configuration& configuration)
{
    JsonWriter writer(JsonWriter::Form::kOneLine);
    writer.Open('{');
    WriteConfiguration(writer, configuration);
    writer.Close();
    return writer.Take();
}

} // namespace tool
