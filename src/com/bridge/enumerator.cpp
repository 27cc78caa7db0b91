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
    /// `start` is an enumerator that stands in front of the first item.
    ExportedEnumerator(std::unique_ptr<Enumerator> items, std::unique_ptr<Enumerator> start)
        : items_(std::move(items)), start_(std::move(start)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG done = 0;
        const HRESULT result = fenced([&] {
            for (Variant item; done < count && items_->next(item); ++done)
                toVariant(items[done], std::move(item));
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
            for (Variant item; done < count && items_->next(item);)
                ++done;
            return done == count ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        return fenced([&] {
            items_ = start_->clone();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        return fenced([&] {
            *copy = new ExportedEnumerator(items_->clone(), start_->clone());
            return S_OK;
        });
    }

private:
    std::unique_ptr<Enumerator> items_;
    std::unique_ptr<Enumerator> start_;
};

} // namespace

IEnumVARIANT* exportEnumerator(std::unique_ptr<Enumerator> items) {
    auto start = items->clone();
    return new ExportedEnumerator(std::move(items), std::move(start));
}

} // namespace tarncom32::com
