#include "script_loop.h"

#include <stdexcept>
#include <utility>

namespace tarncom32::bench {

namespace {

// Neither the header nor the libraries of the compiler have these.
constexpr GUID kActiveScript{0xbb1a2ae1, 0xa4f9, 0x11cf, {0x8f, 0x20, 0x00, 0x80, 0x5f, 0x2c, 0xd0, 0x64}};
#ifdef _WIN64
constexpr GUID kActiveScriptParse{0xc7ef7658, 0xe1ee, 0x480e, {0x97, 0xea, 0xd5, 0x2c, 0xb4, 0xd7, 0x6d, 0x17}};
#else
constexpr GUID kActiveScriptParse{0xbb1a2ae2, 0xa4f9, 0x11cf, {0x8f, 0x20, 0x00, 0x80, 0x5f, 0x2c, 0xd0, 0x64}};
#endif
constexpr GUID kActiveScriptSite{0xdb01a1e3, 0xa42b, 0x11cf, {0x8f, 0x20, 0x00, 0x80, 0x5f, 0x2c, 0xd0, 0x64}};

} // namespace

class ScriptHost::Site final : public IActiveScriptSite {
public:
    explicit Site(const std::vector<NamedObject>& objects) : objects_(objects) {}

    /// The last error of a script; empty when there was none.
    std::string takeError() { return std::exchange(error_, {}); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, kActiveScriptSite)) return E_NOINTERFACE;
        *result = static_cast<IActiveScriptSite*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** type) override {
        if (type) *type = nullptr;
        if (!(wanted & SCRIPTINFO_IUNKNOWN)) return S_OK;
        for (const NamedObject& named : objects_)
            if (named.name == name) {
                named.object->AddRef();
                *item = named.object;
                return S_OK;
            }
        return TYPE_E_ELEMENTNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* failure) override {
        EXCEPINFO exception{};
        failure->GetExceptionInfo(&exception);
        const std::wstring description(exception.bstrDescription ? exception.bstrDescription : L"");
        error_ = "the script failed with " + std::to_string(exception.scode) + ": " +
                 std::string(description.begin(), description.end());
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrSource);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    virtual ~Site() = default;

    std::vector<NamedObject> objects_;
    std::string error_;
    ULONG references_ = 1;
};

ScriptHost::ScriptHost(const std::vector<NamedObject>& objects) : site_(new Site(objects)) {
    IActiveScript* engine = nullptr;
    CLSID vbScript{};
    require(CLSIDFromProgID(L"VBScript", &vbScript), "looking for the script engine");
    require(CoCreateInstance(vbScript, nullptr, CLSCTX_INPROC_SERVER, kActiveScript, reinterpret_cast<void**>(&engine)),
            "creating the script engine");
    engine_.reset(engine);
    IActiveScriptParse* parser = nullptr;
    require(engine->QueryInterface(kActiveScriptParse, reinterpret_cast<void**>(&parser)), "asking for the parser");
    parser_.reset(parser);
    require(parser->InitNew(), "InitNew");
    require(engine->SetScriptSite(site_.get()), "SetScriptSite");
    for (const NamedObject& named : objects)
        require(engine->AddNamedItem(named.name.c_str(), SCRIPTITEM_ISVISIBLE), "AddNamedItem");
    require(engine->SetScriptState(SCRIPTSTATE_CONNECTED), "SetScriptState");
}

ScriptHost::~ScriptHost() {
    engine_->Close();
}

void ScriptHost::run(const std::wstring& statements) {
    const HRESULT result =
        parser_->ParseScriptText(statements.c_str(), nullptr, nullptr, nullptr, 0, 0, 0, nullptr, nullptr);
    if (const std::string error = site_->takeError(); !error.empty()) throw std::runtime_error(error);
    require(result, "ParseScriptText");
}

} // namespace tarncom32::bench
