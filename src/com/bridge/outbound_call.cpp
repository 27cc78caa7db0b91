#include "com/bridge/outbound_call.h"

#include "com/bridge/variants.h"

namespace tarncom32::com {

using automation::Variant;

OutboundCall::OutboundCall(std::span<Variant> arguments, std::uint32_t byReference)
    : arguments_(arguments), byReference_(byReference), many_(arguments.size() > kFew ? 2 * arguments.size() : 0),
      held_(many_.empty() ? few_.data() : many_.data()), passed_(held_ + arguments.size()) {
    try {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            VARIANT& held = held_[i];
            toVariant(held, Variant(arguments[i]));
            ++made_;
            VARIANT& passed = passed_[arguments.size() - 1 - i];
            passed = held;
            if (!isByReference(i)) continue;
            const bool plain = held.vt == VT_EMPTY || held.vt == VT_NULL || held.vt == VT_RECORD;
            passed.vt = static_cast<VARTYPE>(VT_BYREF | (plain ? VARTYPE{VT_VARIANT} : held.vt));
            passed.byref = plain || held.vt == VT_DECIMAL ? static_cast<void*>(&held) : &held.llVal;
        }
    } catch (...) {
        clear();
        throw;
    }
    parameters_.rgvarg = passed_;
    parameters_.cArgs = static_cast<UINT>(arguments.size());
}

OutboundCall::~OutboundCall() {
    clear();
}

void OutboundCall::clear() noexcept {
    while (made_ > 0)
        VariantClear(&held_[--made_]);
}

void OutboundCall::takeBack() {
    if (byReference_ == 0) return;
    std::vector<Variant> values(arguments_.size());
    for (std::size_t i = 0; i < arguments_.size(); ++i)
        if (isByReference(i)) values[i] = fromVariant(held_[i]);
    for (std::size_t i = 0; i < arguments_.size(); ++i)
        if (isByReference(i)) arguments_[i] = std::move(values[i]);
}

} // namespace tarncom32::com
