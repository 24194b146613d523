// parse.cpp - from the text of a file to a configuration, with all faults of the file.
#include "file/document.h"
#include "file/faults.h"
#include "file/parsed.h"
#include "objects/configuration.h"
#include "objects/records.h"

#include <algorithm>

namespace tool {

namespace {

template <class Record>
std::vector<Record> InKeyOrder(const std::vector<Placed<Record>>& placed)
{
    std::vector<Record> records(placed.size());
    std::transform(placed.begin(), placed.end(), records.begin(),
                   [](const Placed<Record>& record) { return record.sRecord; });
    SortByKey(records);
    return records;
}

// The region has a default registration for every such port, so a configuration has it too.
void CompleteDefaultRegistrations(Configuration& configuration)
{
    std::vector<SwctDefaultCVidRegistrationRecord> all;
    for (const SwctSwitchPortRecord& sPort : configuration.aPort) {
        if (sPort.sBody.dwPbPortType == SWCT_PB_PORT_CEP &&
            sPort.sBody.dwIngressFiltering == SWCT_INGRESS_FILTERING_DEFAULT_CVID) {
            const auto* const pRecord = Find(configuration.aDefaultRegistration, KeyOf(sPort.sMoid));
            const SwctPortMoid sMoid{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, sPort.sMoid.bSlot, sPort.sMoid.bPort};
            all.push_back(pRecord != nullptr ? *pRecord : SwctDefaultCVidRegistrationRecord{sMoid, {SWCT_VID_NONE, 0}});
        }
    }
    configuration.aDefaultRegistration = std::move(all);
}

Configuration ToConfiguration(const Parsed& parsed)
{
    Configuration configuration;
    configuration.sSwitch = parsed.sSwitch;
    configuration.dwHrlb = parsed.dwHrlb;
    configuration.aPort = InKeyOrder(parsed.ports);
    // An entry of zeros is what a port that is not there has.
    std::erase_if(configuration.aPort, [](const auto& sPort) { return IsAllZero(sPort.sBody); });
    configuration.aVlan = InKeyOrder(parsed.vlans);
    configuration.aVlanPort = InKeyOrder(parsed.vlanPorts);
    configuration.aInnerTag = InKeyOrder(parsed.innerTags);
    configuration.aPep = InKeyOrder(parsed.peps);
    configuration.aServicePriority = InKeyOrder(parsed.priorities);
    configuration.aCVidRegistration = InKeyOrder(parsed.registrations);
    configuration.aDefaultRegistration = InKeyOrder(parsed.defaultRegistrations);
    configuration.aVidTranslation = InKeyOrder(parsed.translations);
    configuration.aQinQ = InKeyOrder(parsed.qinqPorts);
    CompleteDefaultRegistrations(configuration);
    return configuration;
}

} // namespace

ParseResult Parse(std::string_view text, Strictness strictness)
{
    ParseResult result;
    Faults faults(strictness);
    nlohmann::ordered_json document;
    if (ReadDocument(text, faults, document)) {
        Parsed parsed = ReadObjects(document, faults);
        CheckRules(parsed, faults);
        result.configuration = ToConfiguration(parsed);
    }
    faults.MoveTo(result);
    return result;
}

} // namespace tool
