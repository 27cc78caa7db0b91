#include "library/enums.h"

namespace tarncom32::library {

using automation::operator""_guid;

const automation::ClassInfo& describeEnums() {
    static const automation::ClassInfo info(u"Enums", u"Carries the public enumerations; no members.",
                                            "dd8b3fa3-5e14-4470-824c-2bb844b4f396"_guid,
                                            "f1c27983-ed9d-40ee-80a4-b662d4a706b8"_guid, {});
    return info;
}

} // namespace tarncom32::library
