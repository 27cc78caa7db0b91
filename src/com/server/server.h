#pragma once

#include "automation/class_info.h"

#include <functional>

/// A COM server: an in-process DLL that offers classes described by member tables.
namespace tarncom32::com {

/// A class that the server's type library publishes.
struct ServerClass {
    const automation::ClassInfo* info;
    automation::String progId;                     ///< empty for a class that cannot be created
    std::function<automation::ObjectRef()> create; ///< empty likewise
};

/// What a DLL is made of. Each DLL defines its own.
struct Server {
    automation::StringView name; ///< of the type library, and the source of its errors
    automation::StringView help;
    automation::Guid library; ///< the type library's identifier, version 1.0
    std::vector<ServerClass> classes;
};

/// The server that this module is. Its platform and tables live as long as the module.
const Server& thisServer();

} // namespace tarncom32::com
