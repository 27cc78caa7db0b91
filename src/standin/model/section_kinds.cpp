#include "standin/model/section_kinds.h"

#include <algorithm>

namespace tarncom32::standin {

namespace {

using automation::equalsIgnoreCase;

constexpr StringView kUser[] = {u"Value", u"Prompt"};
constexpr StringView kProperty[] = {u"Value",     u"Prompt", u"Label",  u"Format",   u"SortKey",   u"Type",
                                    u"Invisible", u"Verify", u"LangID", u"Calendar", u"DataLinked"};
constexpr StringView kAction[] = {u"Menu",     u"Prompt",    u"Help",       u"Action",  u"Checked", u"Disabled",
                                  u"ReadOnly", u"Invisible", u"BeginGroup", u"TagName", u"SortKey", u"ButtonFace"};
constexpr StringView kHyperlink[] = {u"Description", u"Address",   u"SubAddress", u"ExtraInfo", u"Frame",
                                     u"SortKey",     u"NewWindow", u"Default",    u"Invisible"};
constexpr StringView kControl[] = {u"X", u"Y", u"XDyn", u"YDyn", u"XCon", u"YCon", u"CanGlue", u"Prompt"};
constexpr StringView kConnection[] = {u"X", u"Y", u"DirX", u"DirY", u"Type", u"AutoGen", u"Prompt"};

constexpr SectionKind kSections[] = {
    {242, u"User", u"User", kUser},         {243, u"Property", u"Prop", kProperty},
    {240, u"Actions", u"Actions", kAction}, {244, u"Hyperlink", u"Hyperlink", kHyperlink},
    {9, u"Control", u"Controls", kControl}, {7, u"Connection", u"Connections", kConnection},
};

constexpr StringView kShapeCells[] = {
    u"PinX",       u"PinY",        u"Width",         u"Height",     u"LocPinX",    u"LocPinY",      u"Angle",
    u"FlipX",      u"FlipY",       u"ResizeMode",    u"LockWidth",  u"LockHeight", u"LockMoveX",    u"LockMoveY",
    u"LockAspect", u"LockDelete",  u"LockBegin",     u"LockEnd",    u"LockRotate", u"LockTextEdit", u"LockGroup",
    u"TheText",    u"TheData",     u"EventDblClick", u"EventXFMod", u"EventDrop",  u"NoObjHandles", u"NonPrinting",
    u"HideText",   u"LayerMember", u"Comment"};
constexpr StringView kPageCells[] = {u"PageWidth",    u"PageHeight",      u"PageScale",
                                     u"DrawingScale", u"DrawingSizeType", u"DrawingScaleType",
                                     u"InhibitSnap",  u"ShdwOffsetX",     u"ShdwOffsetY"};

} // namespace

const SectionKind* sectionOf(std::int16_t index) {
    const auto* found = std::ranges::find(kSections, index, &SectionKind::index);
    return found == std::end(kSections) ? nullptr : found;
}

const SectionKind* sectionOf(StringView prefix) {
    const auto* found =
        std::ranges::find_if(kSections, [&](const SectionKind& kind) { return equalsIgnoreCase(kind.prefix, prefix); });
    return found == std::end(kSections) ? nullptr : found;
}

bool isStandardCell(StringView name, bool page) {
    const std::span<const StringView> shapeCells = kShapeCells;
    const std::span<const StringView> cells = page ? kPageCells : shapeCells;
    return std::ranges::any_of(cells, [&](StringView cell) { return equalsIgnoreCase(cell, name); });
}

} // namespace tarncom32::standin
