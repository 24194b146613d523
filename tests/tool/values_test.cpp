// Files, differences, keys and tables as values, and the documents that the command prints.
#include "file/describe.h"
#include "file/parse.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "terminal/grid.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using namespace tool;

// ' stands for ".
std::string Quoted(std::string text)
{
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

TEST(FileTest, FaultsNameTheirPlace)
{
    struct Case {
        const char* text;  // behind "schema"
        const char* fault; // line, object, path and rule; empty: none
    };
    constexpr Case kCases[] = {
        {"'vlans':[{'id':1,\n'members':{'tagged':['1/1']}}]",
         "2 vlan 1 member 1/1 $.vlans[0].members.tagged[0] there is no such port"},
        {"'ports':[{'port':'1/1','pvid':9}]", "1 port 1/1 $.ports[0].pvid there is no VLAN of that id"},
        {"'ports':[{'port':'1/1'}]", ""}, // the default PVID needs no VLAN
        {"'management':{'vlan':7}", "1 management $.management.vlan there is no VLAN of that id"},
        {"'ports':[{'port':'1/1'}],'vlans':[{'id':5,'members':{'untagged':['1/1']}},\n"
         "{'id':6,'members':{'untagged':['1/1']}},{'id':7,'members':{'untagged':['1/1']}}]",
         "2 vlan 6 member 1/1 $.vlans[1].members.untagged[0] the port is untagged in VLAN 5 already, and frames of "
         "both leave it alike"},
        {"'ports':[{'port':'1/1','typ':1}]", "1 port 1/1 $.ports[0].typ is no member of this object; 'type' is"},
        {"'switch':{'gLagDistribution':2}",
         "1 switch $.switch.gLagDistribution must be a number from 1 to 7 but not 2"},
        // Once a key is lost, what goes with what is not asked.
        {"'ports':[{'port':'1/1','pvid':9}],'vlans':[{'id':1},\n\n{'id':1}]", "3 vlan 1 $.vlans[1].id is there twice"},
        {"'ports':[{'port':'1/1','pvid':9}],'vlans':[{'id':0}]",
         "1 vlan 0 $.vlans[0].id must be a number from 1 to 4094"},
        {"'vlans':[{'id':5,'innerTag':{'enabled':true,'vid':4}}]",
         "1 vlan 5 inner-tag $.vlans[0].innerTag goes with a VLAN that has a 'layer3Interface'"},
        {"'ports':[{'port':'1/1','providerEdgePorts':[{'index':1,'sVid':1}]}]",
         "1 port 1/1 pep 1 $.ports[0].providerEdgePorts[0] goes with a port of type 'cep' only; --lenient leaves it "
         "out"},
        {"'vlans':[{'id':1},{'id':2}],'ports':[{'port':'1/"
         "1','type':'cep','providerEdgePorts':[{'index':1,'sVid':1}],'cVidRegistrations':[{'cVids':3,'sVid':2}]}]",
         "1 port 1/1 cvid 3 $.ports[0].cVidRegistrations[0].sVid the port has no provider edge port of that S-VID"},
        {"'vlans':[{'id':1}],'ports':[{'port':'1/"
         "1','type':'cep','providerEdgePorts':[{'index':1,'sVid':1},{'index':4,'sVid':1}]}]",
         "1 port 1/1 pep 4 $.ports[0].providerEdgePorts[1].sVid another provider edge port of the port has this S-VID"},
        {"'vlans':[{'id':1}],'ports':[{'port':'1/1','qinq':{'providerVid':1}}]",
         "1 port 1/1 qinq $.ports[0].qinq is in force in switch mode 'qinq' only"},
        {"'switch':{'mode':'qinq'},'vlans':[{'id':1}],'ports':[{'port':'1/"
         "1','type':'pnp','vidTranslations':[{'localVid':2,'relayVid':1},{'localVid':3,'relayVid':1}]}]",
         "1 port 1/1 vid 2 $.ports[0].vidTranslations[0] is in force in switch mode 'provider-bridge' only"},
        {"'vlans':[{'id':1}],'ports':[{'port':'1/"
         "1','type':'cep','providerEdgePorts':[{'index':1,'sVid':1}],'cVidRegistrations':[{'cVids':3,'sVid':1,'relay':"
         "true}]}]",
         "1 port 1/1 cvid 3 $.ports[0].cVidRegistrations[0].relayCVid with 'relay' it must be a number from 1 to 4094"},
        {"'vlans':[{'id':5,'layer3Interface':true,'innerTag':{'enabled':true}}]",
         "1 vlan 5 inner-tag $.vlans[0].innerTag.vid with an enabled tag it must be a number from 1 to 4094"},
    };
    for (const Case& row : kCases) {
        const ParseResult result = Parse(Quoted(std::string("{'schema':1,") + row.text + '}'), Strictness::kStrict);
        std::string told;
        for (const ConfigFault& fault : result.faults) {
            told += std::to_string(fault.line) + ' ' + fault.object + ' ' + fault.path + ' ' + fault.rule;
        }
        EXPECT_EQ(Quoted(row.fault), told) << row.text;
        EXPECT_EQ(result.faults.empty(), result.nrOfErrors == 0);
    }
    EXPECT_EQ(1U, Parse("{}", Strictness::kLenient).nrOfErrors) << "schema is required";
}

TEST(DiffTest, TellsObjectsByOneName)
{
    const auto parse = [](const std::string& text) {
        return Parse(Quoted("{'schema':1," + text + '}'), Strictness::kLenient).configuration;
    };
    const Configuration before = parse("'vlans':[{'id':1,'name':'a'},{'id':2},{'id':9}],'ports':[{'port':'1/"
                                       "1','type':'cep','cVidRegistrations':[{'cVids':'1-9','sVid':1}]}]");
    const Configuration after =
        parse("'hrlb':3,'vlans':[{'id':1,'name':'b','members':{'tagged':['1/1','1/"
              "3']}},{'id':3},{'id':4},{'id':9,'innerTag':null}],'ports':[{'port':'1/"
              "1','type':'cep','cVidRegistrations':[{'cVids':'1-9','sVid':2}],'defaultCVidRegistration':{'sVid':1}}]");
    std::string text;
    for (const Difference& difference : Diff(before, after)) {
        text += ToText(difference) + '\n';
    }
    EXPECT_EQ("node: changed: hrlb 2 -> 3\n"
              "port 1/1 cvid 1-9: changed: sVid 1 -> 2\n"
              "port 1/1 default: added: sVid 1\n"
              "vlan 1: changed: name \"a\" -> \"b\"\n"
              "vlan 1 member 1/1 1/3: added: membership \"tagged\"\n"
              "vlan 2: removed: name \"vlan-2\"\n"
              "vlan 3: added: name \"vlan-3\"\n"
              "vlan 4: added: name \"vlan-4\"\n"
              "vlan 9 inner-tag: removed: enabled false, vid 0\n",
              text);
}

TEST(KeysTest, AreDecimal)
{
    EXPECT_EQ(10U, ParseVlan("10"));
    EXPECT_TRUE(ParseVlans("4095,10-12")[11]);
    for (const char* pText : {"010", "0x10", "", "-1", "+1", "4096", "1 ", "0"}) {
        EXPECT_THROW(ParseVlan(pText), Failure) << pText;
        EXPECT_THROW(ParseVlans(pText), Failure) << pText;
    }
    for (const char* pText : {"1/6", "4/1", "01/1", "1/1/9", "1"}) {
        EXPECT_THROW(ParsePort(pText), Failure) << pText;
    }
}

TEST(GridTest, FitsTheTerminal)
{
    Grid grid;
    grid.Add("VLAN", "7", Fit::kNumber);
    grid.Add("Name", "a name that is long enough", Fit::kCut);
    grid.Add("Empty", "");
    grid.Add("Tagged", "1/1-5 2/1-5 3/1-5", Fit::kCut);
    grid.EndRow();
    grid.HideIfEmpty("Empty");
    EXPECT_EQ("VLAN  Name                        Tagged\n   7  a name that is long enough  1/1-5 2/1-5 3/1-5\n",
              grid.TableText(0));
    EXPECT_EQ("VLAN  Name           Tagged\n   7  a name...      1/1-5...\n", grid.TableText(34));
}

TEST(DocumentsTest, AreWhatTheCommandPrints)
{
    const auto read = [](const char* pName) {
        std::ifstream file(std::string(PIOVIOS_DOCS "/") + pName);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    EXPECT_EQ(ConfigurationSchema(), read("configuration.schema.json"));
    EXPECT_EQ(ChangesSchema(), read("changes.schema.json"));
    EXPECT_EQ(OutputSchema(), read("output.schema.json"));
    EXPECT_NE(std::string::npos, read("configuration.md").find(ConfigurationTables())) << "run scripts/tool-docs";
}

} // namespace
