#pragma once

#include "server_under_test.h"

#include <activscp.h>

#include <vector>

namespace tarncom32::bench {

/// The system's VBScript, with objects that scripts know by name.
class ScriptHost {
public:
    struct NamedObject {
        std::wstring name;
        IDispatch* object;
    };

    explicit ScriptHost(const std::vector<NamedObject>& objects);
    ScriptHost(const ScriptHost&) = delete;
    ~ScriptHost();

    /// Runs statements; raises `std::runtime_error` with the script's own error.
    void run(const std::wstring& statements);

private:
    class Site;
    Pointer<Site> site_;
    Pointer<IActiveScript> engine_;
    Pointer<IActiveScriptParse> parser_;
};

} // namespace tarncom32::bench
