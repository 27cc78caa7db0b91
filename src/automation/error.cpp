#include "automation/error.h"

namespace tarncom32::automation {

namespace {

struct KnownError {
    std::int32_t number;
    StringView text;
};

constexpr KnownError kKnownErrors[] = {
    {errors::InvalidProcedureCall, u"Invalid procedure call or argument"},
    {errors::Overflow, u"Overflow"},
    {errors::OutOfMemory, u"Out of memory"},
    {errors::SubscriptOutOfRange, u"Subscript out of range"},
    {errors::DivisionByZero, u"Division by zero"},
    {errors::TypeMismatch, u"Type mismatch"},
    {errors::InternalError, u"Internal error"},
    {errors::BadFileName, u"Bad file name or number"},
    {errors::FileNotFound, u"File not found"},
    {errors::FileAlreadyOpen, u"File already open"},
    {errors::DeviceIo, u"Device I/O error"},
    {errors::FileAlreadyExists, u"File already exists"},
    {errors::DiskFull, u"Disk full"},
    {errors::PermissionDenied, u"Permission denied"},
    {errors::PathFileAccess, u"Path/File access error"},
    {errors::PathNotFound, u"Path not found"},
    {errors::ObjectNotSet, u"Object variable or With block variable not set"},
    {errors::InvalidUseOfNull, u"Invalid use of Null"},
    {errors::ResourceNotFound, u"Resource with identifier not found"},
    {errors::CannotCreateObject, u"ActiveX component can't create object"},
    {errors::NoAutomationName, u"File name or class name not found during Automation operation"},
    {errors::NoSuchMember, u"Object doesn't support this property or method"},
    {errors::ActionNotSupported, u"Object doesn't support this action"},
    {errors::NamedArgumentNotFound, u"Named argument not found"},
    {errors::ArgumentNotOptional, u"Argument not optional"},
    {errors::WrongArgumentCount, u"Wrong number of arguments or invalid property assignment"},
    {errors::NotACollection, u"Object not a collection"},
    {errors::DuplicateKey, u"This key is already associated with an element of this collection"},
    {errors::UnsupportedType, u"Variable uses an Automation type not supported"},
};

struct KnownResult {
    std::uint32_t hresult;
    std::int32_t number;
};

// How hosts translate the failures of COM and of late binding.
constexpr KnownResult kKnownResults[] = {
    {0x80004001, errors::ActionNotSupported},   // E_NOTIMPL
    {0x80004002, 430},                          // E_NOINTERFACE
    {0x80020003, errors::NoSuchMember},         // DISP_E_MEMBERNOTFOUND
    {0x80020004, errors::ArgumentNotOptional},  // DISP_E_PARAMNOTFOUND
    {0x80020005, errors::TypeMismatch},         // DISP_E_TYPEMISMATCH
    {0x80020006, errors::NoSuchMember},         // DISP_E_UNKNOWNNAME
    {0x80020008, errors::UnsupportedType},      // DISP_E_BADVARTYPE
    {0x8002000A, errors::Overflow},             // DISP_E_OVERFLOW
    {0x8002000B, errors::SubscriptOutOfRange},  // DISP_E_BADINDEX
    {0x8002000E, errors::WrongArgumentCount},   // DISP_E_BADPARAMCOUNT
    {0x8002000F, errors::ArgumentNotOptional},  // DISP_E_PARAMNOTOPTIONAL
    {0x80020012, errors::DivisionByZero},       // DISP_E_DIVBYZERO
    {0x80040154, errors::CannotCreateObject},   // REGDB_E_CLASSNOTREG
    {0x80070005, errors::PermissionDenied},     // E_ACCESSDENIED
    {0x8007000E, errors::OutOfMemory},          // E_OUTOFMEMORY
    {0x80070057, errors::InvalidProcedureCall}, // E_INVALIDARG
    {0x800401E3, errors::CannotCreateObject},   // MK_E_UNAVAILABLE
    {0x800401F3, errors::CannotCreateObject},   // CO_E_CLASSSTRING
};

constexpr std::uint32_t kHostFacility = 0x800A0000;

} // namespace

StringView descriptionOf(std::int32_t number) {
    for (const KnownError& known : kKnownErrors)
        if (known.number == number) return known.text;
    return u"Application-defined or object-defined error";
}

Error::Error(std::int32_t number) : Error(number, descriptionOf(number)) {}

Error::Error(std::int32_t number, StringView description)
    : number_(number), description_(description), utf8_(toUtf8(description)) {}

std::int32_t Error::hresult() const noexcept {
    if (origin_ != 0) return origin_;
    if (number_ < 0) return number_;
    return static_cast<std::int32_t>(kHostFacility + (static_cast<std::uint32_t>(number_) & 0xFFFF));
}

Error Error::fromHresult(std::int32_t hresult, StringView description) {
    const auto bits = static_cast<std::uint32_t>(hresult);
    std::int32_t number = hresult;
    if ((bits & 0xFFFF0000) == kHostFacility) number = static_cast<std::int32_t>(bits & 0xFFFF);
    for (const KnownResult& known : kKnownResults)
        if (known.hresult == bits) number = known.number;
    Error error(number, description.empty() ? descriptionOf(number) : description);
    error.origin_ = hresult;
    return error;
}

} // namespace tarncom32::automation
