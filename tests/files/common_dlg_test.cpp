#include "files/common_dlg.h"

#include "automation/convert.h"
#include "fakes.h"
#include "files/file_operations.h"

#include <gmock/gmock.h>

namespace tarncom32::files {
namespace {

using std::string_literals::operator""s;

using automation::Error;
using automation::toText;
using automation::Variant;

constexpr StringView kTwoFilters = u"Drawings (*.vsd)|*.vsd|All files (*.*)|*.*";

class CommonDlgTest : public testing::Test {
protected:
    FakePlatform surroundings_;
    FakeFiles& files_ = surroundings_.files;
    automation::Ref<CommonDlg> dialog_ = automation::make<CommonDlg>(surroundings_.platform);

    // The number that the dialog raises; 0 for none.
    std::int32_t raised() {
        try {
            dialog_->showOpen();
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    }
};

// The value with its type: "$" for a text, "&" and "%" for a 32- and a 16-bit number, "!" for a single.
String typed(const Variant& value) {
    using automation::VariantType;
    const auto type = value.type();
    return (type == VariantType::String    ? u"$"
            : type == VariantType::Long    ? u"&"
            : type == VariantType::Integer ? u"%"
            : type == VariantType::Single  ? u"!"
                                           : u"=") +
           toText(value) + u" ";
}

TEST_F(CommonDlgTest, HasItsPropertiesInOrderWithTheirDefaults) {
    String properties;
    const auto& members = CommonDlg::describe().members;
    for (std::size_t i = 0; i + 2 < members.size(); i += 2) {
        const automation::MemberName name(members[i].name);
        const Variant value = dialog_->get(name);
        properties += String(members[i].name) + typed(value);
        // Each keeps what is assigned to it, and no later one changes.
        dialog_->put(name, u"1");
        EXPECT_EQ(toText(dialog_->get(name)), value.type() == automation::VariantType::Boolean ? u"True" : u"1");
    }
    EXPECT_EQ(properties,
              u"FileName$ DialogTitle$ Filter$ DefaultExt$ InitDir$ Color&0 Flags&0 FontName$ FontBold=False "
              u"FontItalic=False FontStrikeThru=False FontUnderLine=False FromPage%0 ToPage%0 Min%0 Max%0 Copies%1 "
              u"CancelError=False HelpFile$ HelpCommand&0 HelpKey$ PrinterDefault=True FilterIndex%0 HelpContext&0 "
              u"FontSize!8 Action%0 MaxFileSize%260 hDC&0 FileTitle$ Orientation&1 Tag$ OwnerWindow&0 Instance&0 ");
}

TEST_F(CommonDlgTest, PassesTheFieldsToTheDialog) {
    dialog_->fileName = u"Plan.vsd";
    dialog_->dialogTitle = u"Title";
    dialog_->filter = kTwoFilters;
    dialog_->initDir = u"C:\\Drawings";
    dialog_->flags = 0x12345678;
    dialog_->filterIndex = 1;
    dialog_->fileTitle = u"shown";
    dialog_->maxFileSize = 20;
    dialog_->ownerWindow = -5;
    dialog_->instance = 7;
    dialog_->showSave();
    EXPECT_TRUE(files_.saved);
    ASSERT_EQ(files_.requests.size(), 1U);
    const platform::FileDialogRequest& request = files_.requests[0];
    EXPECT_EQ(request.filter, u"Drawings (*.vsd)\0*.vsd\0All files (*.*)\0*.*\0"s);
    EXPECT_EQ(request.file, u"Plan.vsd\0          "s);
    EXPECT_EQ(request.fileSize, 20);
    EXPECT_EQ(request.title, u"Title");
    EXPECT_EQ(request.initialFolder, u"C:\\Drawings");
    EXPECT_EQ(request.flags, 0x12345678);
    EXPECT_EQ(request.filterIndex, 1);
    EXPECT_EQ(request.fileTitle, u"shown");
    EXPECT_EQ(request.owner, -5);
    EXPECT_EQ(request.instance, 7);
    EXPECT_EQ(request.defaultExtension, u"*.vsd");
}

TEST_F(CommonDlgTest, MakesTheSelectedPatternTheDefaultExtensionForGood) {
    struct Case {
        StringView filter, extension;
        std::int16_t index;
        std::int32_t error;
        StringView expected;
    };
    const Case cases[] = {{kTwoFilters, u"", 2, 0, u"*.*"},    {kTwoFilters, u"", 1, 0, u"*.vsd"},
                          {kTwoFilters, u"vss", 2, 0, u"vss"}, {kTwoFilters, u"", 0, 0, u""},
                          {kTwoFilters, u"", 32767, 9, u""},   {u"a|", u"", 1, 0, u""},
                          {u"no pattern", u"", 1, 9, u""}};
    for (const Case& c : cases) {
        files_.requests.clear();
        dialog_->filter = c.filter;
        dialog_->defaultExt = c.extension;
        dialog_->filterIndex = c.index;
        EXPECT_EQ(raised(), c.error) << c.index;
        EXPECT_EQ(dialog_->defaultExt, c.expected) << c.index;
        EXPECT_EQ(files_.requests.empty(), c.error != 0);
    }
}

TEST_F(CommonDlgTest, RefusesANameThatLeavesNoRoom) {
    dialog_->maxFileSize = 10;
    dialog_->fileName = u"12345678";
    EXPECT_EQ(raised(), 0);
    dialog_->fileName = u"123456789";
    EXPECT_EQ(raised(), automation::errors::InvalidProcedureCall);
    EXPECT_EQ(files_.requests.size(), 1U);
}

TEST_F(CommonDlgTest, TellsCancelledFromFailed) {
    struct Case {
        std::int32_t failure;
        std::int16_t cancelError;
        std::int32_t error;
    };
    const Case cases[] = {{0, 0, 0},        {0, -1, 32755},    {0, 1, 0}, // only exactly -1 asks for it
                          {4104, 0, 32755}, {4104, -1, 32755}, {12290, 0, 12290}, {12290, -1, 12290}};
    dialog_->fileName = u"Plan.vsd";
    for (const Case& c : cases) {
        files_.answer = {false, c.failure, u"changed", 9};
        dialog_->cancelError = Boolean::fromBits(c.cancelError);
        EXPECT_EQ(raised(), c.error) << c.failure << " " << c.cancelError;
        EXPECT_EQ(dialog_->fileName, u"Plan.vsd");
        EXPECT_EQ(dialog_->filterIndex, 0);
    }
    files_.answer = {true, 0, u"C:\\new.vsd\0   "s, 2};
    EXPECT_EQ(raised(), 0);
    EXPECT_EQ(dialog_->fileName, u"C:\\new.vsd");
    EXPECT_EQ(dialog_->filterIndex, 2);
    EXPECT_EQ(dialog_->fileTitle, u"");
}

class SelectedFilenameTest : public CommonDlgTest {
protected:
    automation::Ref<FileOperations> operations_ = automation::make<FileOperations>(surroundings_.platform);
    Boolean cancel_;
    ObjectRef used_;
    std::int32_t window_ = 0;

    String select(StringView path = {}, Boolean existing = false, std::int16_t index = 0, StringView filter = {}) {
        return operations_->getSelectedFilename(u"Title", cancel_, path, filter, existing, index, used_, window_);
    }
};

TEST_F(SelectedFilenameTest, PreparesADialogAndHandsItBack) {
    struct Case {
        StringView path, file, folder;
    };
    const Case cases[] = {{u"", u"", u"C:\\Library"},
                          {u"Plan.vsd", u"Plan.vsd", u"C:\\Library"},
                          {u"D:\\Dir\\Plan.vsd", u"Plan.vsd", u"D:\\Dir"}};
    files_.answer = {true, 0, u"D:\\x.vsd", 1};
    for (const Case& c : cases) {
        EXPECT_EQ(select(c.path, true), u"D:\\x.vsd");
        const auto& request = files_.requests.back();
        EXPECT_EQ(request.title, u"Title");
        EXPECT_EQ(request.file.substr(0, request.file.find(u'\0')), c.file);
        EXPECT_EQ(request.initialFolder, c.folder);
        EXPECT_EQ(request.flags, 4096);
    }
    const ObjectRef first = used_;
    ASSERT_TRUE(first);
    window_ = 77;
    EXPECT_EQ(select(u"", false, 2, kTwoFilters), u"D:\\x.vsd");
    EXPECT_EQ(used_, first);
    EXPECT_EQ(files_.requests.back().flags, 0);
    EXPECT_EQ(files_.requests.back().owner, 77);
    EXPECT_EQ(files_.requests.back().filterIndex, 2);
    EXPECT_EQ(cancel_, Boolean(false));
}

TEST_F(SelectedFilenameTest, SaysCancelledForCancelledOnly) {
    for (const auto& [failure, cancelled] : {std::pair{12290, false}, {0, true}, {4104, true}}) {
        cancel_ = Boolean::fromBits(5);
        files_.answer = {false, failure, u"", 0};
        EXPECT_EQ(select(), u"");
        EXPECT_EQ(cancel_.value, cancelled ? -1 : 5);
    }
    cancel_ = Boolean::fromBits(5);
    EXPECT_EQ(select(u"", false, 1), u""); // no such filter: a failure, not a cancelled dialog
    EXPECT_EQ(cancel_.value, 5);
    EXPECT_TRUE(surroundings_.messageBox.shown.empty());
}

TEST_F(SelectedFilenameTest, UsesACallersDialogByName) {
    const auto keep = [](NamedObject::Arguments) { return Variant(); };
    const auto own = automation::make<NamedObject>(
        std::map<String, NamedObject::Member>{{u"DialogTitle", keep},
                                              {u"Filter", keep},
                                              {u"FilterIndex", keep},
                                              {u"InitDir", keep},
                                              {u"Flags", keep},
                                              {u"CancelError", keep},
                                              {u"ShowOpen", keep},
                                              {u"FileName", [](auto a) { return a.empty() ? u"E:\\y" : u""; }}});
    used_ = own;
    window_ = 77; // the dialog has no OwnerWindow: that failure alone is passed over
    EXPECT_EQ(select(), u"E:\\y");
    EXPECT_THAT(own->accessed,
                testing::ElementsAre(u"DialogTitle", u"Filter", u"FilterIndex", u"FileName", u"InitDir", u"Flags",
                                     u"OwnerWindow", u"CancelError", u"ShowOpen", u"FileName"));
}

TEST_F(SelectedFilenameTest, LateBoundKeepsTheFlagOfTheCaller) {
    files_.answer = {true, 0, u"D:\\x.vsd", 1};
    std::vector<Variant> arguments{u"Title", std::int16_t{3}};
    EXPECT_EQ(operations_->invoke(u"GetSelectedFilename", automation::Access::Method, arguments),
              Variant(u"D:\\x.vsd"));
    EXPECT_EQ(arguments[1], Variant(Boolean::fromBits(3)));
}

} // namespace
} // namespace tarncom32::files
