#include "cli/run_tarn.h"
#include "support/source_folder.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace tarncom32::tests {
namespace {

using nlohmann::json;

std::string example() {
    return sourceFolder() / "examples/drawings/office-network.vsdx";
}

Outcome session(std::vector<std::string> options) {
    options.insert(options.begin(), {"session", example()});
    return runTarn(options);
}

TEST(Session, ShowsWhatTheAddInHas) {
    const Outcome run = session({"--addon-args", "/doc=1 /page=2 /verbose", "--wanted-version", "1.4"});
    EXPECT_EQ(run.out, "Drawing: " + example() + R"(
Visio: 16.0, major version 16
Add-on string: /doc=1 /page=2 /verbose
Parameters: "/verbose "
Document: office-network.vsdx
Page: Étage supérieur (Upper floor)
Shape: none
Version: 1.4, wanted 1.4: suits
Shapes: 5 on the page, groups not entered

Depth  Name           Universal name
0      Équipe A       Team A
0      Switch         Switch
0      PC de réserve  Spare PC
0      Câble          Cable
0      Kabel.25       Cable.25
)");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    // The walk inside a shape enters every group, asked to or not.
    const std::string inside =
        session({"--addon-args", "/doc=1 /page=1 /shape=Serverraum", "--application", "OfficeNetwork"}).out;
    EXPECT_EQ(inside.substr(std::min(inside.find("Parameters:"), inside.size())), R"(Parameters: none
Document: office-network.vsdx
Page: Erdgeschoß (Ground floor)
Shape: Serverraum (Server room)
Version: not checked
Shapes: 10 inside the shape, 1 kept for OfficeNetwork

Depth  Kept  Name                Universal name
1      no      Sheet.2           Sheet.2
1      yes     Gestell 1         Rack 1
2      no        Verteilerfeld   Patch panel
3      no          Switch        Switch
4      no            Chassis     Chassis
4      no            Anschlüsse  Ports
5      no              Sheet.8   Sheet.8
5      no              Sheet.9   Sheet.9
5      no              Sheet.10  Sheet.10
2      no        Dateiserver     File server
)");
}

TEST(Session, TellsTheUserOfAnUnfitVersion) {
    for (const auto& [wanted, message] : {std::pair("1.3", "newer than 1.3."), std::pair("10", "older than 10.")}) {
        const Outcome run = session({"--wanted-version", wanted, "--application", "OfficeNetwork"});
        EXPECT_EQ(run.err, std::string("[OfficeNetwork] The document's version 1.4 is ") + message + '\n');
        EXPECT_NE(run.out.find(std::string(", wanted ") + wanted + ": does not suit\n"), std::string::npos) << run.out;
        const json programs = json::parse(session({"--json", "--wanted-version", wanted}).out);
        EXPECT_EQ(programs["version"], (json{{"document", "1.4"}, {"wanted", wanted}, {"suits", false}}));
        EXPECT_EQ(programs["reports"].size(), 1u);
    }
}

TEST(Session, HasNothingWhereTheAddOnStringLeadsNowhere) {
    const json lost = json::parse(session({"--json", "--addon-args", "/doc=2 /page=1", "--wanted-version", "9"}).out);
    for (const char* absent : {"document", "page", "shape", "version"})
        EXPECT_TRUE(lost[absent].is_null()) << absent;
    EXPECT_TRUE(lost["shapes"].empty());
    EXPECT_FALSE(lost.contains("reports"));
    const std::string out = session({"--addon-args", ""}).out;
    EXPECT_NE(out.find("\nShapes: none, as the add-on string leads to no page\n"), std::string::npos) << out;
}

TEST(Session, RefusesWhatIsNoDrawingInOneLine) {
    const TemporaryFolder folder;
    const Outcome broken = runTarn({"session", folder.write("a", "no drawing")});
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(broken.err.starts_with("tarn: error 0x86DB")) << broken.err;
    EXPECT_EQ(std::ranges::count(broken.err, '\n'), 1);
    EXPECT_EQ(broken.out, "");

    const Outcome absent = runTarn({"session", "/no/such\xFF"});
    EXPECT_EQ(absent.status, 2);
    EXPECT_EQ(absent.err, "tarn: there is no file \"/no/such\uFFFD\"; name a Visio drawing\n");
    const Outcome version = session({"--wanted-version", "new"});
    EXPECT_EQ(version.status, 2);
    EXPECT_EQ(version.err, "tarn: --wanted-version \"new\" is no number; write it as 1.4\n");
}

} // namespace
} // namespace tarncom32::tests
