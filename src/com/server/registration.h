#pragma once

#include "com/bridge/com_ptr.h"
#include "com/server/server.h"

namespace tarncom32::com {

/// The registry entries of a server: for the whole machine where the caller may write there, else for the user.
/// Class and interface keys are separate for 32 and 64 bits, ProgIDs and the type library are shared; each bitness
/// keeps the other's entries whole when it goes.
class Registration {
public:
    /// `path` is the DLL's own. `view` is which bitness's keys are meant: 0 for this process's own, or KEY_WOW64_32KEY
    /// or KEY_WOW64_64KEY.
    Registration(const Server& server, automation::String path, ComPtr<ITypeLib> library, REGSAM view = 0);

    /// Writes everything. Raises the registry's error, with nothing half done left behind.
    void add() const;
    /// Removes what `add` wrote, in both places; what is not there is passed over. Raises access denied where there are
    /// entries that the caller may not remove.
    void remove() const;

private:
    void addTo(HKEY hive) const;
    void removeFrom(HKEY hive) const;
    /// Whether the caller may add and remove classes there.
    bool isWritable(HKEY hive) const;
    /// Whether any of the classes is registered there.
    bool isIn(HKEY hive) const;
    automation::String platformName() const;

    const Server& server_;
    automation::String path_;
    ComPtr<ITypeLib> library_;
    REGSAM view_;
};

} // namespace tarncom32::com
