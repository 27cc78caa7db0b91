#include "frame/published_library.h"

namespace tarncom32::frame {

automation::StringView instancingText(Instancing instancing) {
    switch (instancing) {
    case Instancing::Global:
        return u"global";
    case Instancing::Creatable:
        return u"creatable";
    case Instancing::NotCreatable:
        return u"not creatable";
    case Instancing::Internal:
        break;
    }
    return u"internal";
}

} // namespace tarncom32::frame
