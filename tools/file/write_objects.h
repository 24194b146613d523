// write_objects.h - objects in the JSON format, as save writes them.
#pragma once

#include "file/json_writer.h"
#include "objects/catalogue.h"
#include "objects/notation.h"

namespace tool {

// C-VIDs of a port that are registered in the same way.
struct RegistrationGroup {
    const SwctCVidRegistrationRecord* pFirst;
    std::vector<VidRange> cVids;
};

// In the order of the lowest C-VID of each group.
std::vector<RegistrationGroup> GroupRegistrations(std::span<const SwctCVidRegistrationRecord> registrationsOfPort);

// The members of one object, to be called between Open and Close.
void WriteVlan(JsonWriter& writer, const Configuration& configuration, const SwctVlanRecord& sVlan);
// A port can have thousands of translations; who writes them in another form leaves them out here.
void WritePort(JsonWriter& writer, const Configuration& configuration, const SwctSwitchPortRecord& sPort,
               bool withTranslations = true);
void WritePep(JsonWriter& writer, const Configuration& configuration, const SwctProviderEdgePortRecord& sPep);
void WriteRegistrations(JsonWriter& writer, const RegistrationGroup& group);

// The document from its "switch" on.
void WriteConfiguration(JsonWriter& writer, const Configuration& configuration);

} // namespace tool
