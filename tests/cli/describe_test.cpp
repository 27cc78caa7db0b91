#include "cli/run_tarn.h"
#include "library/catalogue.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tarncom32::tests {
namespace {

using automation::toUtf8;
using nlohmann::json;

json described(const std::string& path) {
    const Outcome run = runTarn({"describe", "--json", path});
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
}

TEST(Classes, AreAllListedWithTheirKindsAndSayWhetherTheyAreBuilt) {
    const json list = json::parse(runTarn({"classes", "--json"}).out);
    const std::string text = runTarn({"classes"}).out;
    ASSERT_EQ(list.size(), library::catalogue().size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const library::CatalogueEntry& entry = library::catalogue()[i];
        EXPECT_EQ(list[i]["name"], toUtf8(entry.name));
        EXPECT_EQ(list[i]["kind"], toUtf8(frame::instancingText(entry.instancing)));
        EXPECT_EQ(list[i]["progId"].is_null(), !entry.isCreatable());
        EXPECT_NE(text.find(toUtf8(entry.name) + ' '), std::string::npos) << text;
        EXPECT_EQ(runTarn({"describe", toUtf8(entry.name)}).out.ends_with("\n  Not built yet in this version.\n"),
                  !entry.isBuilt() && entry.name != u"Enums");
    }
}

TEST(Describe, ShowsAMemberForReading) {
    EXPECT_EQ(runTarn({"describe", "stringfunctions.reversestring"}).out,
              "StringFunctions.ReverseString, method, DISPID 16, returns String\n"
              "  The text from its last character to its first.\n"
              "\n"
              "  sText  String  in\n");
    const std::string optional = runTarn({"describe", "VisioFunctions.GetAllTheShapesFromThePage"}).out;
    EXPECT_NE(optional.find("\n  sApplicationName       String   in, optional, else \"\"\n"), std::string::npos)
        << optional;
}

TEST(Describe, GivesAMemberToPrograms) {
    const json member = described("VisioFunctions.GetVisioObjectsFromAddonString");
    EXPECT_TRUE(member["result"].is_null());
    EXPECT_EQ(member["parameters"][1], json::parse(R"({"name": "sParameters", "type": "String", "direction": "in/out",
                                                       "optional": false, "default": null})"));
    EXPECT_EQ(described("VisioFunctions.GetAllTheShapesFromThePage")["parameters"][2]["default"], false);
}

TEST(Describe, CoversEveryMemberOfEveryBuiltClass) {
    for (const frame::PublishedClass& published : library::publishedLibrary().classes) {
        const std::string name = toUtf8(published.info->name);
        const json members = described(name)["members"];
        const std::string text = runTarn({"describe", name}).out;
        ASSERT_EQ(members.size(), published.info->members.size());
        for (std::size_t i = 0; i < members.size(); ++i) {
            const automation::MemberInfo& member = published.info->members[i];
            EXPECT_EQ(members[i]["parameters"].size(), member.parameters.size());
            EXPECT_EQ(text.find(' ' + toUtf8(member.name)) != std::string::npos,
                      member.visibility == automation::Visibility::Normal)
                << toUtf8(member.name) << '\n'
                << text;
        }
    }
}

TEST(Describe, ShowsEnumerationsAndTheirCarrier) {
    EXPECT_EQ(runTarn({"describe", "eDisplayModes"}).out.substr(0, 27), "eDisplayModes, enumeration\n");
    EXPECT_EQ(described("REGISTRY_HIVE")["members"][0]["value"], -2147483648LL);
    EXPECT_EQ(described("Enums")["enumerations"].size(), frame::enumerations().size());
}

} // namespace
} // namespace tarncom32::tests
