#pragma once

#include "automation/variant.h"
#include "com/bridge/com_ptr.h"

#include <array>
#include <span>
#include <vector>

namespace tarncom32::com {

/// Arguments on their way to an object from outside, member or event: VARIANTs in the order of DISPPARAMS, the last one
/// first, and what comes back in those by reference.
class OutboundCall {
public:
    /// An argument whose bit is set in `byReference` (lowest bit: first) goes as a reference to a variable of its own
    /// type; one without a type, Null or a record as a reference to a VARIANT. Throws as `toVariant` does.
    OutboundCall(std::span<automation::Variant> arguments, std::uint32_t byReference);
    OutboundCall(const OutboundCall&) = delete;
    ~OutboundCall();

    /// For IDispatch::Invoke, without named arguments; for one call.
    DISPPARAMS& parameters() { return parameters_; }

    /// Gives the arguments by reference what the object left in them: all, or none where one cannot be read, which it
    /// raises.
    void takeBack();

private:
    void clear() noexcept;
    bool isByReference(std::size_t i) const { return i < 32 && (byReference_ >> i & 1); }

    static constexpr std::size_t kFew = 8;
    std::span<automation::Variant> arguments_;
    std::uint32_t byReference_;
    std::array<VARIANT, 2 * kFew> few_;
    std::vector<VARIANT> many_;
    VARIANT* held_;   ///< the values
    VARIANT* passed_; ///< what the object is given, which refers to them
    std::size_t made_ = 0;
    DISPPARAMS parameters_{};
};

} // namespace tarncom32::com
