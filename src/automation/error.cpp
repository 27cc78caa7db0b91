#include "automation/error.h"

#include <algorithm>
#include <array>
#include <new>

namespace tarncom32::automation {

namespace {

/// A number and its text, in both forms with a NUL behind.
struct KnownError {
    std::int32_t number;
    const char* utf8;
    std::size_t length;
    std::array<char16_t, 72> characters{};

    consteval KnownError(std::int32_t errorNumber, std::string_view text)
        : number(errorNumber), utf8(text.data()), length(text.size()) {
        std::ranges::copy(text, characters.begin());
    }
    StringView text() const { return {characters.data(), length}; }
};

constexpr KnownError kKnownErrors[] = {
    {errors::InvalidProcedureCall, "Invalid procedure call or argument"},
    {errors::Overflow, "Overflow"},
    {errors::OutOfMemory, "Out of memory"},
    {errors::SubscriptOutOfRange, "Subscript out of range"},
    {errors::ArrayFixedOrLocked, "This array is fixed or temporarily locked"},
    {errors::DivisionByZero, "Division by zero"},
    {errors::TypeMismatch, "Type mismatch"},
    {errors::InternalError, "Internal error"},
    {errors::BadFileName, "Bad file name or number"},
    {errors::FileNotFound, "File not found"},
    {errors::FileAlreadyOpen, "File already open"},
    {errors::DeviceIo, "Device I/O error"},
    {errors::FileAlreadyExists, "File already exists"},
    {errors::DiskFull, "Disk full"},
    {errors::PermissionDenied, "Permission denied"},
    {errors::PathFileAccess, "Path/File access error"},
    {errors::PathNotFound, "Path not found"},
    {errors::ObjectNotSet, "Object variable or With block variable not set"},
    {errors::InvalidUseOfNull, "Invalid use of Null"},
    {errors::ResourceNotFound, "Resource with identifier not found"},
    {errors::CannotCreateObject, "ActiveX component can't create object"},
    {errors::NoAutomationName, "File name or class name not found during Automation operation"},
    {errors::NoSuchMember, "Object doesn't support this property or method"},
    {errors::ActionNotSupported, "Object doesn't support this action"},
    {errors::NamedArgumentNotFound, "Named argument not found"},
    {errors::ArgumentNotOptional, "Argument not optional"},
    {errors::WrongArgumentCount, "Wrong number of arguments or invalid property assignment"},
    {errors::NotACollection, "Object not a collection"},
    {errors::DuplicateKey, "This key is already associated with an element of this collection"},
    {errors::UnsupportedType, "Variable uses an Automation type not supported"},
};
constexpr KnownError kOtherError{0, "Application-defined or object-defined error"};

const KnownError& known(std::int32_t number) noexcept {
    const auto* found = std::ranges::find(kKnownErrors, number, &KnownError::number);
    return found != std::end(kKnownErrors) ? *found : kOtherError;
}

constexpr std::uint32_t kOutOfMemory = 0x8007000E; // E_OUTOFMEMORY

struct KnownResult {
    std::uint32_t hresult;
    std::int32_t number;
};

// How hosts translate the failures of COM and of late binding.
constexpr KnownResult kKnownResults[] = {
    {0x80004001, errors::ActionNotSupported},  // E_NOTIMPL
    {0x80004002, 430},                         // E_NOINTERFACE
    {0x80020003, errors::NoSuchMember},        // DISP_E_MEMBERNOTFOUND
    {0x80020004, errors::ArgumentNotOptional}, // DISP_E_PARAMNOTFOUND
    {0x80020005, errors::TypeMismatch},        // DISP_E_TYPEMISMATCH
    {0x80020006, errors::NoSuchMember},        // DISP_E_UNKNOWNNAME
    {0x80020008, errors::UnsupportedType},     // DISP_E_BADVARTYPE
    {0x8002000A, errors::Overflow},            // DISP_E_OVERFLOW
    {0x8002000B, errors::SubscriptOutOfRange}, // DISP_E_BADINDEX
    {0x8002000D, errors::ArrayFixedOrLocked},  // DISP_E_ARRAYISLOCKED
    {0x8002000E, errors::WrongArgumentCount},  // DISP_E_BADPARAMCOUNT
    {0x8002000F, errors::ArgumentNotOptional}, // DISP_E_PARAMNOTOPTIONAL
    {0x80020012, errors::DivisionByZero},      // DISP_E_DIVBYZERO
    {0x80040154, errors::CannotCreateObject},  // REGDB_E_CLASSNOTREG
    {0x80070005, errors::PermissionDenied},    // E_ACCESSDENIED
    {kOutOfMemory, errors::OutOfMemory},
    {0x80070057, errors::InvalidProcedureCall}, // E_INVALIDARG
    {0x800401E3, errors::CannotCreateObject},   // MK_E_UNAVAILABLE
    {0x800401F3, errors::CannotCreateObject},   // CO_E_CLASSSTRING
};

constexpr std::uint32_t kHostFacility = 0x800A0000;

} // namespace

StringView descriptionOf(std::int32_t number) noexcept {
    return known(number).text();
}

Error::Error(std::int32_t number, StringView description) : number_(number) {
    if (description != descriptionOf(number))
        description_ = std::make_shared<Description>(Description{String(description), toUtf8(description)});
}

Error Error::withoutSource(std::int32_t number, StringView description) {
    Error error(number, description);
    error.namesSource_ = false;
    return error;
}

StringView Error::description() const noexcept {
    return description_ ? StringView(description_->text) : descriptionOf(number_);
}

const char* Error::what() const noexcept {
    return description_ ? description_->utf8.c_str() : known(number_).utf8;
}

std::int32_t Error::hresult() const noexcept {
    if (number_ == errors::OutOfMemory) return static_cast<std::int32_t>(kOutOfMemory);
    if (origin_ != 0) return origin_;
    if (number_ < 0) return number_;
    return static_cast<std::int32_t>(kHostFacility + (static_cast<std::uint32_t>(number_) & 0xFFFF));
}

Error Error::fromHresult(std::int32_t hresult) noexcept {
    const auto bits = static_cast<std::uint32_t>(hresult);
    std::int32_t number = hresult;
    if ((bits & 0xFFFF0000) == kHostFacility) number = static_cast<std::int32_t>(bits & 0xFFFF);
    for (const KnownResult& result : kKnownResults)
        if (result.hresult == bits) number = result.number;
    Error error(number);
    error.origin_ = hresult;
    return error;
}

Error Error::fromHresult(std::int32_t hresult, StringView description) {
    Error error = fromHresult(hresult);
    error.description_ = Error(error.number_, description).description_;
    return error;
}

Error errorInFlight() noexcept {
    try {
        try {
            throw;
        } catch (const Error& error) {
            return error;
        } catch (const std::bad_alloc&) {
            return Error(errors::OutOfMemory);
        } catch (const std::exception& error) {
            return Error(errors::InternalError, fromUtf8(error.what()));
        }
    } catch (const std::bad_alloc&) {
        return Error(errors::OutOfMemory); // no memory for the text of that exception
    } catch (...) {
        return Error(errors::InternalError);
    }
}

} // namespace tarncom32::automation
