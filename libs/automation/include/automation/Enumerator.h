#pragma once

#include <new>
#include <vector>

#include "automation/Object.h"

namespace vlm::com {

/// Goes through a list as it stood when the walk began. `HandOut::Copy` makes of what the list holds what the caller
/// gets and owns.
template <typename Interface, typename Item, typename Given, typename HandOut>
class Enumerator final : public Object<Interface> {
public:
    explicit Enumerator(std::vector<Given> items, std::size_t next = 0) : items_(std::move(items)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG given = 0;
        for (; given < count && next_ < items_.size(); ++given) items[given] = HandOut::Copy(items_[next_++]);
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = items_.size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** copy) override {
        if (copy == nullptr) return E_POINTER;
        *copy = new (std::nothrow) Enumerator(items_, next_);
        return *copy == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    std::vector<Given> items_;
    std::size_t next_;
};

/// A collection as `For Each` walks it.
struct VariantHandOut {
    static VARIANT Copy(const Variant& item) { return Variant(item).Detach(); }
};
using VariantEnumerator = Enumerator<IEnumVARIANT, VARIANT, Variant, VariantHandOut>;

}  // namespace vlm::com
