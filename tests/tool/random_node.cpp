#include "random_node.h"

#include "objects/catalogue.h"
#include "objects/keys.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <set>
#include <vector>

using namespace tool;

namespace {

class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    uint32_t Draw(uint32_t first, uint32_t last)
    {
        return std::uniform_int_distribution<uint32_t>(first, last)(m_random);
    }

    Configuration Node()
    {
        Configuration c;
        c.sSwitch = DefaultSwitch();
        Fill(Class::kSwitch, &c.sSwitch);
        Fill(Class::kNode, &c.dwHrlb);
        const bool isBridge = c.sSwitch.dwSwitchMode == SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
        std::set<uint16_t> vlans{1};
        for (int i = 0; i < 30; ++i) {
            vlans.insert(static_cast<uint16_t>(Draw(1, 4094)));
        }
        m_vlans.assign(vlans.begin(), vlans.end());
        c.sManagement = {static_cast<uint8_t>(Draw(0, 3)), AnyVlan(), Draw(0, 7)};
        for (const Port port : AllPorts()) {
            if (Draw(0, 5) != 0) {
                AddPort(c, port, isBridge);
            }
        }
        for (const uint16_t vlan : m_vlans) {
            AddVlan(c, vlan);
        }
        return c;
    }

    uint16_t AnyVlan()
    {
        return m_vlans[Draw(0, static_cast<uint32_t>(m_vlans.size()) - 1)];
    }

private:
    // Every field but keys, what repeats a key, and VLANs.
    void Fill(Class id, void* pRecord)
    {
        const ObjectClass& row = RowOf(id);
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            const Field& field = row.fields[i];
            auto* const pField = static_cast<uint8_t*>(pRecord) + field.offset;
            if (i == row.keyField || field.isVlan || field.notation == Notation::kPort ||
                (field.sameAs != kNoField && field.IsNumber())) {
                continue;
            }
            if (field.IsNumber()) {
                const Range range = field.SensibleRange();
                const uint32_t number = Draw(0, 2) == 0 ? field.byDefault : Draw(range.min, range.max);
                std::memcpy(pField, field.MakesSense(number) ? &number : &range.min, field.size);
            } else {
                for (std::size_t b = 0; b + 1 < field.size; ++b) {
                    pField[b] = static_cast<uint8_t>(Draw('!', '~'));
                }
            }
        }
    }

    void AddPort(Configuration& c, Port port, bool isBridge)
    {
        SwctSwitchPortRecord sPort{{SWCT_CLASS_SWITCH_PORT, port.slot, port.port}, {}};
        Fill(Class::kPort, &sPort);
        sPort.sBody.wPvid = AnyVlan();
        sPort.sBody.dwPbPortType = isBridge ? +sPort.sBody.dwPbPortType : 0U;
        c.aPort.push_back(sPort);
        if (!isBridge) {
            SwctQinQPortRecord sQinQ{{SWCT_CLASS_QINQ_PORT, port.slot, port.port}, {}};
            Fill(Class::kQinQ, &sQinQ);
            sQinQ.sBody.wProviderTagVid = AnyVlan();
            c.aQinQ.push_back(sQinQ);
        } else if (sPort.sBody.dwPbPortType == SWCT_PB_PORT_CEP) {
            AddCep(c, port);
        } else if (sPort.sBody.dwPbPortType != SWCT_PB_PORT_NONE) {
            for (uint16_t local = static_cast<uint16_t>(Draw(1, 900)); local <= 4094;
                 local = static_cast<uint16_t>(local + Draw(1, 900))) {
                SwctVidTranslationRecord sRecord{{SWCT_CLASS_VID_TRANSLATION, port.slot, port.port, local},
                                                 {local, AnyVlan(), {}, 3}};
                c.aVidTranslation.push_back(sRecord);
            }
        }
    }

    void AddCep(Configuration& c, Port port)
    {
        std::vector<uint16_t> sVids;
        for (uint16_t index = 1; index <= SWCT_PEP_MAX; ++index) {
            const uint16_t sVid = AnyVlan();
            if (Draw(0, 2) != 0 || std::find(sVids.begin(), sVids.end(), sVid) != sVids.end()) {
                continue;
            }
            sVids.push_back(sVid);
            SwctProviderEdgePortRecord sPep{{SWCT_CLASS_PROVIDER_EDGE_PORT, port.slot, port.port, index}, {}};
            Fill(Class::kPep, &sPep);
            sPep.sBody.wSvid = sVid;
            c.aPep.push_back(sPep);
            for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
                c.aServicePriority.push_back(
                    {{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, port.slot, port.port, index, priority},
                     {priority, Draw(1, 8)}});
            }
        }
        for (uint16_t cVid = static_cast<uint16_t>(Draw(1, 500)); cVid <= 4094 && !sVids.empty();
             cVid = static_cast<uint16_t>(cVid + Draw(1, 500))) {
            SwctCVidRegistrationRecord sRecord{{SWCT_CLASS_CVID_REGISTRATION, port.slot, port.port, cVid}, {}};
            Fill(Class::kRegistration, &sRecord);
            sRecord.sBody.wCVid = cVid;
            sRecord.sBody.wSvid = sVids[Draw(0, static_cast<uint32_t>(sVids.size()) - 1)];
            sRecord.sBody.wRelayCVid = std::max<uint16_t>(sRecord.sBody.wRelayCVid, sRecord.sBody.boRelayCVid);
            c.aCVidRegistration.push_back(sRecord);
        }
        const uint16_t defaultSVid = sVids.empty() || Draw(0, 1) == 0 ? uint16_t{SWCT_VID_NONE} : sVids[0];
        c.aDefaultRegistration.push_back(
            {{SWCT_CLASS_DEFAULT_CVID_REGISTRATION, port.slot, port.port}, {defaultSVid, 1}});
    }

    void AddVlan(Configuration& c, uint16_t vlan)
    {
        SwctVlanRecord sVlan{{SWCT_CLASS_VLAN, vlan}, {}};
        Fill(Class::kVlan, &sVlan);
        sVlan.sBody.wVlanId = vlan;
        sVlan.sBody.dwRowState = 1;
        SwctVlanIfInnerTagRecord sTag{{SWCT_CLASS_VLAN_IF_INNER_TAG, vlan}, {}};
        Fill(Class::kInnerTag, &sTag);
        sTag.sBody.wInnerVlanId = std::max<uint16_t>(sTag.sBody.wInnerVlanId, 1);
        sVlan.sBody.dwVlanIf = sTag.sBody.dwInnerTagEnable == SWCT_INNER_TAG_ON ? 1 : +sVlan.sBody.dwVlanIf;
        c.aVlan.push_back(sVlan);
        c.aInnerTag.push_back(sTag);
        for (const SwctSwitchPortRecord& sPort : c.aPort) {
            const bool isUntagged = sPort.sBody.wPvid == vlan;
            if (isUntagged || Draw(0, 1) == 0) {
                c.aVlanPort.push_back({{SWCT_CLASS_VLAN_PORT, vlan, sPort.sMoid.bSlot, sPort.sMoid.bPort},
                                       {sPort.sMoid.bSlot, sPort.sMoid.bPort, 1, isUntagged ? 2U : 1U}});
            }
        }
    }

    std::mt19937 m_random;
    std::vector<uint16_t> m_vlans{1};
};

} // namespace

Configuration RandomNode(unsigned seed)
{
    return Generator(seed).Node();
}
