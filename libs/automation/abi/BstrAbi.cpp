#include <cstdlib>
#include <cstring>

#include "abi/Interfaces.h"

namespace {

/// Eight bytes, so that the characters stay aligned; the length is in the last four.
constexpr std::size_t kHead = 8;
constexpr UINT kLongest = 0x3FFFFFFF;

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    if (length > kLongest) return nullptr;
    const std::uint32_t bytes = length * static_cast<std::uint32_t>(sizeof(OLECHAR));
    auto* block = static_cast<BYTE*>(std::calloc(1, kHead + bytes + sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    std::memcpy(block + kHead - sizeof bytes, &bytes, sizeof bytes);
    if (text != nullptr && bytes != 0) std::memcpy(block + kHead, text, bytes);
    return reinterpret_cast<BSTR>(block + kHead);
}

BSTR SysAllocString(const OLECHAR* text) {
    if (text == nullptr) return nullptr;
    UINT length = 0;
    while (text[length] != 0) ++length;
    return SysAllocStringLen(text, length);
}

void SysFreeString(BSTR text) {
    if (text != nullptr) std::free(reinterpret_cast<BYTE*>(text) - kHead);
}

UINT SysStringByteLen(BSTR text) {
    std::uint32_t bytes = 0;
    if (text != nullptr) std::memcpy(&bytes, reinterpret_cast<BYTE*>(text) - sizeof bytes, sizeof bytes);
    return bytes;
}

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / static_cast<UINT>(sizeof(OLECHAR)); }
