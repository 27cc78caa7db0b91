#include "visio/addon_string.h"

#include "automation/convert.h"
#include "frame/report.h"

namespace tarncom32::visio {

using automation::String;
using automation::StringView;

namespace {

constexpr StringView kDocument = u"/doc=";
constexpr StringView kPage = u"/page=";
constexpr StringView kShape = u"/shape=";
constexpr StringView kUniversalShape = u"/shapeu=";

void readField(StringView field, AddonString& result) {
    if (field.starts_with(kDocument)) {
        frame::silently([&] {
            result.document = automation::roundToInteger(automation::leadingNumber(field.substr(kDocument.size())));
        });
    } else if (field.starts_with(kPage)) {
        frame::silently([&] { result.page = automation::toInteger(String(field.substr(kPage.size()))); });
    } else if (field.starts_with(kShape)) {
        result.shape = field.substr(kShape.size());
    } else if (field.starts_with(kUniversalShape)) {
        result.shape = field.substr(kUniversalShape.size());
        // Stays set: a later "/shape=" gives the name, which is then looked up as a universal one.
        result.shapeIsUniversalName = true;
    } else {
        result.others.append(field).push_back(u' ');
    }
}

} // namespace

AddonString parseAddonString(StringView text) {
    AddonString result;
    if (text.empty()) return result;
    for (;;) {
        const std::size_t blank = text.find(u' ');
        readField(text.substr(0, blank), result);
        if (blank == StringView::npos) return result;
        text.remove_prefix(blank + 1);
    }
}

} // namespace tarncom32::visio
