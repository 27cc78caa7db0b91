// What calls through COM cost, in ratios to other ways to do the same: com_bench DLL

#include "hand_written.h"
#include "script_loop.h"
#include "server_under_test.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>

using namespace tarncom32::bench;

namespace {

using Seconds = std::chrono::duration<double>;

/// The shortest time of one round of each job; rounds alternate, so that a busy machine slows all of them.
std::vector<double> shortest(const std::vector<std::function<void()>>& jobs) {
    constexpr int kRounds = 15;
    std::vector<double> best(jobs.size(), 1e9);
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            const auto start = std::chrono::steady_clock::now();
            jobs[i]();
            best[i] = std::min(best[i], Seconds(std::chrono::steady_clock::now() - start).count());
        }
    return best;
}

/// A line for a comparison: nanoseconds of one call each, and how many times the peer's ours takes.
void print(const char* job, double ours, const char* peer, double theirs, double limit) {
    const double ratio = ours / theirs;
    std::printf("%-24s %8.0f ns   %-32s %8.0f ns   ratio %.3f, at most %.1f: %s\n", job, ours * 1e9, peer, theirs * 1e9,
                ratio, limit, ratio <= limit ? "kept" : "MISSED");
}

Text text(const wchar_t* letters) {
    return Text(SysAllocString(letters));
}

VARIANT argument(const Text& text) {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text.get();
    return value;
}

Pointer<ITypeInfo> typeOf(IDispatch& object) {
    ITypeInfo* found = nullptr;
    require(object.GetTypeInfo(0, 0, &found), "GetTypeInfo");
    return Pointer<ITypeInfo>(found);
}

void lateBound(const ServerUnderTest& server) {
    constexpr int kCalls = 4000;
    const Pointer<IDispatch> object = server.create(L"StringFunctions");
    const Pointer<ITypeInfo> type = typeOf(*object);
    const Text source = text(L"a,value");
    const Text delimiter = text(L",");
    VARIANT arguments[] = {argument(delimiter), argument(source)};

    // ITypeInfo looks for a name from the start of the table on.
    const struct {
        const char* job;
        std::wstring name;
        long expected; // the number, or the length of the text
    } rows[] = {{"late-bound, early member", L"NumberOfSubStringsInSourceString", 1},
                {"late-bound, middle member", L"ReturnStringAfterDelimiter", 5},
                {"late-bound, late member", L"ReturnStringBeforeLastDelimiter", 1}};
    for (const auto& row : rows) {
        std::wstring name = row.name;
        const auto check = [&](HRESULT result, const VARIANT& value) {
            const Text made(value.vt == VT_BSTR ? value.bstrVal : nullptr);
            const long given = value.vt == VT_I4 ? value.lVal : static_cast<long>(SysStringLen(made.get()));
            if (result != S_OK || given != row.expected) throw std::runtime_error("a call gave a wrong result");
        };
        const std::vector<double> times = shortest({
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    LPOLESTR wanted = name.data();
                    DISPID id = 0;
                    VARIANT value{};
                    DISPPARAMS parameters{arguments, nullptr, 2, 0};
                    object->GetIDsOfNames(IID_NULL, &wanted, 1, LOCALE_USER_DEFAULT, &id);
                    check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &value,
                                         nullptr, nullptr),
                          value);
                }
            },
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    LPOLESTR wanted = name.data();
                    MEMBERID id = 0;
                    VARIANT value{};
                    DISPPARAMS parameters{arguments, nullptr, 2, 0};
                    type->GetIDsOfNames(&wanted, 1, &id);
                    check(type->Invoke(object.get(), id, DISPATCH_METHOD, &parameters, &value, nullptr, nullptr),
                          value);
                }
            },
        });
        print(row.job, times[0] / kCalls, "the same through ITypeInfo", times[1] / kCalls, 0.1);
    }
}

void earlyBound(const ServerUnderTest& server) {
    constexpr int kCalls = 20000;
    const Pointer<IDispatch> object = server.create(L"StringFunctions");
    const Pointer<ITypeInfo> type = typeOf(*object);
    wchar_t name[] = L"ReturnStringAfterDelimiter";
    LPOLESTR wanted = name;
    DISPID id = 0;
    require(object->GetIDsOfNames(IID_NULL, &wanted, 1, 0, &id), "GetIDsOfNames");
    using Method = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, BSTR*, BSTR*, BSTR*);
    const auto method = reinterpret_cast<Method>((*reinterpret_cast<void***>(object.get()))[vtableSlot(*type, id)]);
    const Pointer<IHandWritten> peer = newHandWritten();

    const struct {
        const char* job;
        std::wstring key;
        std::wstring value;
    } rows[] = {{"vtable call, short text", L"key", L"value"},
                {"vtable call, long text", std::wstring(200, L'k'), std::wstring(200, L'v')}};
    const Text delimiter = text(L"!");
    for (const auto& row : rows) {
        const Text source = text((row.key + L"!" + row.value).c_str());
        BSTR sourceText = source.get();
        BSTR delimiterText = delimiter.get();
        const auto check = [&](HRESULT result, BSTR made) {
            const Text owned(made);
            if (result != S_OK || SysStringLen(made) != row.value.size())
                throw std::runtime_error("a call gave a wrong result");
        };
        const std::vector<double> times = shortest({
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    BSTR made = nullptr;
                    const HRESULT result = method(object.get(), &sourceText, &delimiterText, &made);
                    check(result, made);
                }
            },
            [&] {
                for (int i = 0; i < kCalls; ++i) {
                    BSTR made = nullptr;
                    const HRESULT result = peer->ReturnStringAfterDelimiter(&sourceText, &delimiterText, &made);
                    check(result, made);
                }
            },
        });
        print(row.job, times[0] / kCalls, "the same written by hand", times[1] / kCalls, 1.5);
    }
}

void scripts(const ServerUnderTest& server) {
    constexpr int kCalls = 20000;
    const Pointer<IDispatch> profile = server.create(L"UserProfile");
    const Pointer<IDispatch> dictionary = createSystemObject(L"Scripting.Dictionary");
    ScriptHost host({{L"profile", profile.get()}, {L"dictionary", dictionary.get()}});
    host.run(L"Sub CountUp(o)\nDim i, x\nFor i = 1 To " + std::to_wstring(kCalls) +
             L"\nx = o.Count\nNext\nIf x <> 0 Then Err.Raise 5\nEnd Sub\n"
             L"Sub Nothings(o)\nDim i, x\nFor i = 1 To " +
             std::to_wstring(kCalls) + L"\nNext\nEnd Sub\nDim entries\nSet entries = profile.ProfileEntries\n");
    const std::vector<double> times = shortest({
        [&] { host.run(L"CountUp entries"); },
        [&] { host.run(L"CountUp dictionary"); },
        [&] { host.run(L"Nothings entries"); },
    });
    print("VBScript, Count in a loop", (times[0] - times[2]) / kCalls, "Scripting.Dictionary's Count",
          (times[1] - times[2]) / kCalls, 0.6);
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    try {
        if (count != 2) throw std::runtime_error("usage: com_bench DLL");
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
        const ServerUnderTest server(arguments[1]);
        lateBound(server);
        earlyBound(server);
        scripts(server);
        std::fflush(stdout);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "com_bench: %s\n", error.what());
        return 1;
    }
}
