#include "com/bridge/enumerator.h"

#include "com/bridge/failure.h"
#include "com/bridge/unknown.h"
#include "com/bridge/variants.h"

namespace tarncom32::com {

using automation::Enumerator;
using automation::Variant;

namespace {

class ExportedEnumerator final : public Unknown<IEnumVARIANT> {
public:
    /// `start` is a walk that has not begun.
    ExportedEnumerator(std::unique_ptr<Enumerator> walk, std::unique_ptr<Enumerator> start)
        : walk_(std::move(walk)), start_(std::move(start)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG done = 0;
        const HRESULT result = fenced([&] {
            for (Variant item; done < count && walk_->next(item); ++done)
                initVariant(items[done], std::move(item));
            return done == count ? S_OK : S_FALSE;
        });
        // Of a call that fails the caller frees nothing.
        while (FAILED(result) && done > 0)
            VariantClear(&items[--done]);
        if (fetched) *fetched = done;
        return result;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        return fenced([&] {
            ULONG done = 0;
            for (Variant item; done < count && walk_->next(item);)
                ++done;
            return done == count ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        return fenced([&] {
            walk_ = start_->clone();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        return fenced([&] {
            *copy = new ExportedEnumerator(walk_->clone(), start_->clone());
            return S_OK;
        });
    }

private:
    std::unique_ptr<Enumerator> walk_;
    std::unique_ptr<Enumerator> start_;
};

} // namespace

IEnumVARIANT* exportEnumerator(std::unique_ptr<Enumerator> walk) {
    auto start = walk->clone();
    return new ExportedEnumerator(std::move(walk), std::move(start));
}

} // namespace tarncom32::com
