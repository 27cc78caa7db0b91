#include "frame/native_helper.h"

#include "automation/late_bound.h"
#include "frame/report.h"

namespace tarncom32::frame {

using automation::Object;
using automation::String;
using automation::StringView;
using platform::CodePage;

namespace {

constexpr char16_t kQuote = u'"';

// Puts the contents of the string literal that `formula` is into `contents`; false when it is none.
bool readLiteral(StringView formula, String& contents) {
    if (formula.size() < 2 || formula.front() != kQuote || formula.back() != kQuote) return false;
    const StringView inside = formula.substr(1, formula.size() - 2);
    contents.clear();
    for (std::size_t i = 0; i < inside.size(); ++i) {
        contents.push_back(inside[i]);
        if (inside[i] != kQuote) continue;
        // A quote within a literal is doubled; a single one means that this is an expression such as "a"&"b".
        if (i + 1 == inside.size() || inside[i + 1] != kQuote) return false;
        ++i;
    }
    return true;
}

} // namespace

String replaceResourcePlaceHolder(const CodePage& codePage, StringView source, StringView replacement,
                                  StringView placeHolder) {
    String text = codePage.narrow(source);
    const String wanted = codePage.narrow(placeHolder);
    const String put = codePage.narrow(replacement);
    if (wanted.empty()) return text;
    for (std::size_t at = text.find(wanted); at != String::npos; at = text.find(wanted, at + put.size()))
        text.replace(at, wanted.size(), put);
    return text;
}

String stringFromVisio(const CodePage& codePage, StringView formula) {
    const String narrow = codePage.narrow(formula);
    String contents;
    return readLiteral(narrow, contents) ? contents : narrow;
}

bool weCareAboutThisShape(const CodePage& codePage, Object& shape, StringView applicationName) {
    bool ours = false;
    silently([&] {
        if (automation::toInteger(shape.call(u"CellExists", u"User.Application", std::int16_t{0})) == 0) return;
        const automation::LateBound cell(shape.get(u"Cells", u"User.Application"));
        const String formula = automation::toText(cell.get(u"Formula"));
        ours = stringFromVisio(codePage, formula) == codePage.narrow(applicationName);
    });
    return ours;
}

} // namespace tarncom32::frame
