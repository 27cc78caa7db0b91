#include "cli/run_tarn.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>

namespace tarncom32::tests {
namespace {

using std::string_literals::operator""s;
using testing::HasSubstr;

class RegistryCommandTest : public testing::Test {
protected:
    Outcome run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "registry");
        return runTarn(arguments, {"TARNCOM32_REGISTRY=" + file_.string()});
    }
    void store(const std::string& path, const std::string& name, std::uint32_t type, const std::string& bytes) {
        platform::portable::SqliteRegistry(file_, codePage_)
            .create(platform::registry_root::kCurrentUser, path)
            ->write(name, type, bytes);
    }
    /// What "export" writes for a key, in UTF-8 and without its first lines.
    std::string exported(const std::string& key) {
        const Outcome outcome = run({"export", key});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        automation::String text;
        for (std::size_t i = 0; i + 1 < outcome.out.size(); i += 2)
            text += static_cast<char16_t>(static_cast<unsigned char>(outcome.out[i]) |
                                          static_cast<unsigned char>(outcome.out[i + 1]) << 8);
        const std::string utf8 = automation::toUtf8(text);
        const std::string start = "\uFEFFWindows Registry Editor Version 5.00\r\n\r\n";
        EXPECT_TRUE(utf8.starts_with(start)) << utf8;
        return utf8.substr(std::min(start.size(), utf8.size()));
    }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_.path() / "registry.sqlite";
    platform::portable::Windows1252 codePage_;
};

TEST_F(RegistryCommandTest, SetsGetsListsAndDeletes) {
    const std::string key = "HKCU\\Software\\Vendor\\Größe";
    const std::vector<std::string> sets[] = {
        {"set", key, "Width", "12"},
        {"set", key, "", "a default"},
        {"set", key, "Path", "%HOME%", "--type", "REG_EXPAND_SZ"},
        {"set", key, "Count", "0x10", "--type", "REG_DWORD"},
        {"set", key, "Big", "18446744073709551615", "--type", "REG_QWORD"},
        {"set", key, "Bytes", "0a,ff 00", "--type", "REG_BINARY"},
        {"set", "hkcu\\SOFTWARE\\vendor\\GRÖSSE", "--", "Other", "-1"},
        {"set", "hkey_current_user\\software\\vendor\\GRÖßE\\Inner", "a", "b"},
    };
    for (const std::vector<std::string>& arguments : sets)
        EXPECT_EQ(run(arguments).status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(run({"list", key}).out, "Inner\\\n"
                                      "Width      REG_SZ  12\n"
                                      "(Default)  REG_SZ  a default\n"
                                      "Path       REG_EXPAND_SZ  %HOME%\n"
                                      "Count      REG_DWORD  16\n"
                                      "Big        REG_QWORD  18446744073709551615\n"
                                      "Bytes      REG_BINARY  0a ff 00\n");
    EXPECT_EQ(run({"get", key, "WIDTH"}).out, "12\n");
    EXPECT_EQ(run({"get", key}).out, "a default\n");
    EXPECT_EQ(runTarn({"registry", "--file", file_.string(), "get", key, "Width"}).out, "12\n");
    EXPECT_EQ(runTarn({"registry", "get", key, "Width", "--file", file_.string()}).out, "12\n");
    const nlohmann::json list = nlohmann::json::parse(run({"list", "--json", "HKCU\\software\\VENDOR\\größe"}).out);
    EXPECT_EQ(list["key"], "HKEY_CURRENT_USER\\Software\\Vendor\\Größe");
    EXPECT_EQ(list["subkeys"], nlohmann::json::parse(R"(["Inner"])"));
    EXPECT_EQ(list["values"][3], nlohmann::json::parse(R"({"name": "Count", "type": "REG_DWORD", "data": 16})"));

    EXPECT_EQ(run({"delete", key, "width"}).status, 0);
    EXPECT_EQ(run({"delete", key}).status, 1) << "it has a subkey";
    EXPECT_EQ(run({"get", key}).out, "a default\n");
    EXPECT_EQ(run({"delete", "--recursive", key}).status, 0);
    EXPECT_EQ(run({"list", "HKCU\\Software\\Vendor"}).out, "GRÖSSE\\\n");
}

TEST_F(RegistryCommandTest, RefusesInOneLineThatSaysWhatToDo) {
    EXPECT_EQ(run({"delete", "HKCU", "Name"}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(file_)) << "deleting makes no store";
    run({"set", "HKCU\\K", "Name", "text"});
    const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
        {{"list", "Software\\Vendor"}, 2, "does not begin with a root; write HKCU"},
        {{"list", "HKCU\\Missing"}, 1, "There is no key HKEY_CURRENT_USER\\Missing in the store "},
        {{"get", "HKCU\\k", "Other"}, 1, "There is no value \"Other\" of the key HKEY_CURRENT_USER\\K"},
        {{"get", "HKCU\\k"}, 1, "There is no default value of the key HKEY_CURRENT_USER\\K"},
        {{"delete", "HKCU"}, 2, "a root cannot be deleted"},
        {{"set", "HKCU\\K", "Name", "日本"}, 2, "8-bit code page"},
        {{"set", "HKCU\\K", "Name", "x", "--type", "REG_LINK"}, 2, "write REG_SZ, "},
        {{"set", "HKCU\\K", "Name", "4294967296", "--type", "REG_DWORD"}, 2, "is not a number from 0 to 4294967295"},
        {{"set", "HKCU\\K", "Name", "0a f", "--type", "REG_BINARY"}, 2, "is not a row of hexadecimal bytes"},
        {{"export", "HKCU\\K", "/nowhere/x.reg"}, 1, "The file /nowhere/x.reg could not be written"},
        {{}, 2, "tarn registry --help"},
    };
    for (const auto& [arguments, status, expected] : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << expected;
        EXPECT_THAT(outcome.err, HasSubstr(expected));
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    }
    EXPECT_EQ(run({"get", "HKCU\\K", "Name"}).out, "text\n");

    std::ofstream(file_) << "notes, not a store";
    const Outcome outcome = run({"set", "HKCU\\K", "Name", "text"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("is damaged, or is no settings store"));
}

TEST_F(RegistryCommandTest, ExportsEveryTypeAsTheRegistryToolsReadIt) {
    namespace type = platform::registry_type;
    const std::tuple<std::string, std::uint32_t, std::string, const char*> cases[] = {
        {"", type::kString, "x\0"s, R"(@="x")"},
        {"\\\"\xE4", type::kString, "\x80\0"s, R"("\\\"ä"="€")"},
        {"Empty", type::kString, "\0"s, R"("Empty"="")"},
        {"No bytes", type::kString, "", R"("No bytes"=hex(1):)"},
        {"No NUL", type::kString, "a\x80"s, R"("No NUL"=hex(1):61,00,ac,20)"},
        {"Two NULs", type::kString, "a\0\0"s, R"("Two NULs"=hex(1):61,00,00,00,00,00)"},
        {"Lines", type::kString, "a\nb\0"s, R"("Lines"=hex(1):61,00,0a,00,62,00,00,00)"},
        {"Expand", type::kExpandString, "%a\0"s, R"("Expand"=hex(2):25,00,61,00,00,00)"},
        {"Binary", type::kBinary, "\x01\xFE"s, R"("Binary"=hex:01,fe)"},
        {"Number", type::kDword, "\x2A\0\0\x80"s, R"("Number"=dword:8000002a)"},
        {"Short number", type::kDword, "\x2A"s, R"("Short number"=hex(4):2a)"},
        {"List", type::kMultiString, "a\0b\0\0"s, R"("List"=hex(7):61,00,00,00,62,00,00,00,00,00)"},
        {"Other", 0xFFFFFFFF, "\1"s, R"("Other"=hex(ffffffff):01)"},
    };
    std::string expected = "[HKEY_CURRENT_USER\\Software\\Vendor]\r\n";
    for (const auto& [name, valueType, bytes, line] : cases) {
        store("Software\\Vendor", name, valueType, bytes);
        expected += line + "\r\n"s;
    }
    EXPECT_EQ(exported("hkcu\\SOFTWARE\\vendor"), expected + "\r\n");
}

TEST_F(RegistryCommandTest, ExportsSubkeysInTheirStoredSpellingAndBreaksLongLines) {
    store("Alpha\\Beta\\Zeta", "a", platform::registry_type::kString, "1\0"s);
    store("Alpha\\beta\\Gamma", "B", platform::registry_type::kBinary, std::string(50, '\x11'));
    const std::string text = exported("HKCU\\ALPHA\\BETA");
    EXPECT_EQ(text, "[HKEY_CURRENT_USER\\Alpha\\Beta]\r\n"
                    "\r\n"
                    "[HKEY_CURRENT_USER\\Alpha\\Beta\\Gamma]\r\n"
                    "\"B\"=hex:11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,\\\r\n"
                    "  11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,11,\\\r\n"
                    "  11,11\r\n"
                    "\r\n"
                    "[HKEY_CURRENT_USER\\Alpha\\Beta\\Zeta]\r\n"
                    "\"a\"=\"1\"\r\n"
                    "\r\n");
    const std::filesystem::path target = folder_.path() / "out.reg";
    EXPECT_EQ(run({"export", "HKCU\\ALPHA\\BETA", target.string()}).status, 0);
    EXPECT_EQ(folder_.read("out.reg"), run({"export", "HKCU\\ALPHA\\BETA"}).out);
}

} // namespace
} // namespace tarncom32::tests
