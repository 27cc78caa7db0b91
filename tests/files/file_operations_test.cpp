#include "files/file_operations.h"

#include "automation/array.h"
#include "automation/convert.h"
#include "fakes.h"

#include <gmock/gmock.h>

namespace tarncom32::files {
namespace {

using std::string_literals::operator""s;

using automation::Array;
using automation::Error;
using automation::Null;
using automation::toText;
using testing::ElementsAre;
using Arguments = NamedObject::Arguments;

class FileOperationsTest : public testing::Test {
protected:
    FakePlatform surroundings_;
    FakeFiles& files_ = surroundings_.files;
    automation::Ref<FileOperations> operations_ = automation::make<FileOperations>(surroundings_.platform);

    // The first lines of the reports so far.
    std::vector<std::string> reports() const {
        std::vector<std::string> lines;
        for (const auto& shown : surroundings_.messageBox.shown)
            lines.push_back(automation::toUtf8(shown.text.substr(0, shown.text.find(u'\r'))));
        return lines;
    }
};

automation::ObjectRef answering(StringView name, Variant result) {
    return automation::make<NamedObject>(
        std::map<String, NamedObject::Member>{{String(name), [result](Arguments) { return result; }}});
}

TEST_F(FileOperationsTest, AMissingFileIsReadOnlyAndNotOpen) {
    for (const auto& [word, readOnly] : {std::pair{0xFFFFFFFFU, true}, {1U, true}, {33U, true}, {128U, false}}) {
        files_.attributeWord = word;
        EXPECT_EQ(operations_->isFileReadOnly(u"f").isTrue(), readOnly) << word;
    }
    for (const auto& [error, open] :
         {std::pair{0, false}, {53, false}, {70, true}, {76, true}, {52, true}, {7, true}}) {
        files_.openError = error;
        EXPECT_EQ(operations_->isFileAlreadyOpened(u"f").isTrue(), open) << error;
    }
    EXPECT_TRUE(reports().empty());
}

TEST_F(FileOperationsTest, TrimsAFoldersPathLikeItsBuffer) {
    using frame::SystemFolder;
    files_.specialFolder = u"  C:\\Documents \0 C:\\rest"s;
    EXPECT_EQ(operations_->findSystemFolder(SystemFolder::My_Documents), u"C:\\Documents");
    EXPECT_EQ(operations_->findSystemFolder(static_cast<SystemFolder>(12345)), u"");
}

TEST_F(FileOperationsTest, CleansTheCallersVariable) {
    struct Case {
        Variant given;
        Variant left;
        String result;
    };
    const Case cases[] = {{u"a/b:c?.vsd", u"a_b_c_.vsd", u"a_b_c_.vsd"},
                          {u"\\/:?<>|", u"_______", u"_______"},
                          {u"a*b\"c", u"a*b\"c", u"a*b\"c"}, // these two stay
                          {std::int16_t{12}, u"12", u"12"},
                          {{}, u"", u""},
                          {Null{}, Null{}, u""},
                          {Array(automation::VariantType::String), Array(automation::VariantType::String), u""}};
    for (const Case& c : cases) {
        Variant name = c.given;
        EXPECT_EQ(operations_->cleanFileName(name), c.result);
        EXPECT_EQ(name, c.left);
    }
    EXPECT_THAT(reports(),
                ElementsAre("Problem in FileOperations.CleanFileName", "Problem in FileOperations.CleanFileName"));
}

TEST_F(FileOperationsTest, OutputsMayBeTheInput) {
    String path = u"C:\\Drawings\\Plan.vsd";
    String name;
    operations_->parseFileAndPathName(path, path, name);
    EXPECT_EQ(path, u"C:\\Drawings");
    EXPECT_EQ(name, u"Plan.vsd");
    String extension;
    operations_->parseFileNameAndExtension(name, extension, name);
    EXPECT_EQ(extension, u"Plan");
    EXPECT_EQ(name, u".vsd");
}

TEST_F(FileOperationsTest, MakesAnObjectOnceAndHandsItBack) {
    files_.object = answering(u"GetTempName", u"rad1.tmp");
    ObjectRef own;
    EXPECT_EQ(operations_->getTempFileName(own), u"rad1.tmp");
    EXPECT_EQ(own, files_.object);
    operations_->getTempFileName(own);
    EXPECT_EQ(files_.created, 1);

    // Late bound the caller's variable is filled as well, and one that is left out does no harm.
    std::vector<Variant> arguments{ObjectRef()};
    operations_->invoke(u"GetTempFileName", automation::Access::Method, arguments);
    EXPECT_EQ(automation::toObject(arguments[0]), files_.object);
    EXPECT_EQ(toText(operations_->call(u"GetTempFileName")), u"rad1.tmp");
}

TEST_F(FileOperationsTest, CallsACallersObjectByName) {
    Variant created, overwrite, text;
    std::size_t count = 0;
    bool closed = false;
    const ObjectRef stream = automation::make<NamedObject>(std::map<String, NamedObject::Member>{
        {u"Write", [&](Arguments a) { return text = a[0], Variant(); }},
        {u"Close", [&](Arguments) { return closed = true, Variant(); }},
    });
    const auto foreign = automation::make<NamedObject>(std::map<String, NamedObject::Member>{
        {u"GetExtensionName", [](Arguments) { return Variant(u"vsdx"); }},
        {u"GetFileName", [](Arguments a) { return Variant(u"name of " + toText(a[0])); }},
        {u"GetSpecialFolder", [](Arguments a) { return Variant(answering(u"Path", u"D:\\Folder" + toText(a[0]))); }},
        {u"GetTempName", [](Arguments) { return Variant(u"rad.x.tmp"); }},
        {u"CreateTextFile",
         [&](Arguments a) { return created = a[0], overwrite = a[1], count = a.size(), Variant(stream); }},
    });
    ObjectRef own = foreign;
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Plan.vsdx", own), u"C:\\Plan");
    EXPECT_EQ(operations_->trimFilePath(u"C:\\Plan", own), u"name of C:\\Plan");
    EXPECT_EQ(operations_->getTempDirectory(own), u"D:\\Folder2\\");
    EXPECT_EQ(operations_->getTempPathFileName(own, u""), u"D:\\Folder2\\rad.x.tmp");
    EXPECT_EQ(operations_->getTempPathFileName(own, u".vsd"), u"D:\\Folder2\\rad.x.vsd");
    EXPECT_EQ(operations_->getTempPathFileName(own, u"xml"), u"D:\\Folder2\\rad.xxml"); // no dot is put in
    operations_->saveStreamToFile(u"line\n", u"C:\\out.txt", false, own);
    EXPECT_EQ(created, Variant(u"C:\\out.txt"));
    EXPECT_EQ(overwrite, Variant(false));
    EXPECT_THAT(foreign->named, ElementsAre(u"Overwrite"));
    EXPECT_EQ(count, 2U); // nothing is said of UTF-16
    EXPECT_EQ(text, Variant(u"line\n"));
    EXPECT_TRUE(closed);
    EXPECT_EQ(files_.created, 0);
    EXPECT_TRUE(reports().empty());
}

TEST_F(FileOperationsTest, KeepsAPathWithoutExtensionAndASeparatorThatIsThere) {
    ObjectRef none = answering(u"GetExtensionName", u"");
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Rev.2\\Plan", none), u"C:\\Rev.2\\Plan");
    ObjectRef root = answering(u"GetSpecialFolder", answering(u"Path", u"T:\\"));
    EXPECT_EQ(operations_->getTempDirectory(root), u"T:\\");
}

TEST_F(FileOperationsTest, ReportsOrRaisesWhatTheObjectFailsIn) {
    ObjectRef none; // and none can be made
    EXPECT_EQ(operations_->getTempDirectory(none), u"");
    EXPECT_EQ(operations_->getTempFileName(none), u"");
    EXPECT_EQ(operations_->getTempPathFileName(none, u".x"), u"");
    operations_->saveStreamToFile(u"", u"f", true, none);
    EXPECT_THAT(reports(),
                ElementsAre("Problem in FileOperations.GetTempDirectory", "Problem in FileOperations.GetTempFileName",
                            "Problem in FileOperations.GetTempPathFileName",
                            "Problem in FileOperations.SaveStreamToFile"));
    EXPECT_NE(surroundings_.messageBox.shown[0].text.find(u"Error Number: 429\r\n"), String::npos);

    for (ObjectRef fso : {none, answering(u"Other", u"")}) {
        const std::int32_t number = fso ? automation::errors::NoSuchMember : automation::errors::CannotCreateObject;
        for (const auto member : {&FileOperations::trimFileExtension, &FileOperations::trimFilePath}) {
            try {
                (*operations_.*member)(u"f", fso);
                ADD_FAILURE() << "raised nothing";
            } catch (const Error& error) {
                EXPECT_EQ(error.number(), number);
            }
        }
    }
    EXPECT_EQ(surroundings_.messageBox.shown.size(), 4U);
}

} // namespace
} // namespace tarncom32::files
