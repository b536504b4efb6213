#include "automation/ErrorReport.h"

#include <cstdint>
#include <new>

#include "automation/Bstr.h"
#include "automation/Ref.h"

namespace vlm::com {

HRESULT ResultOf(std::int32_t number) noexcept {
    constexpr std::uint32_t kRunTimeError = 0x800A0000;
    if (number == 0) return E_FAIL;
    const auto code = static_cast<std::uint32_t>(number);
    if (number > 0 && number <= 0xFFFF) return static_cast<HRESULT>(kRunTimeError | code);
    const auto result = static_cast<HRESULT>(code);
    return FAILED(result) ? result : E_FAIL;
}

HRESULT Report(HRESULT result, std::string_view description, std::string_view source,
               const GUID& interfaceId) noexcept {
    try {
        WideText wideSource = ToWide(source);
        WideText wideDescription = ToWide(description);
        Ref<ICreateErrorInfo> made;
        if (FAILED(CreateErrorInfo(made.Receive()))) return result;
        made->SetGUID(interfaceId);
        made->SetSource(wideSource.data());
        made->SetDescription(wideDescription.data());
        SetErrorInfo(0, Query<IErrorInfo>(made.Get()).Get());
    } catch (...) {  // the result code still tells
    }
    return result;
}

HRESULT ReportCurrentException(std::string_view source, const GUID& interfaceId) noexcept {
    try {
        throw;
    } catch (const Error& error) {
        const std::string_view own = error.Source();
        return Report(ResultOf(error.Number()), error.what(), own.empty() ? source : own, interfaceId);
    } catch (const std::bad_alloc&) {
        return Report(E_OUTOFMEMORY, "Memoria insufficiente.", source, interfaceId);
    } catch (const std::exception& error) {
        return Report(E_FAIL, error.what(), source, interfaceId);
    } catch (...) {
        return Report(E_UNEXPECTED, "Errore imprevisto.", source, interfaceId);
    }
}

Error TakeError(HRESULT result, std::string_view what) {
    Ref<IErrorInfo> info;
    GetErrorInfo(0, info.Receive());
    Bstr source;
    Bstr description;
    if (info) {
        info->GetSource(source.Receive());
        info->GetDescription(description.Receive());
    }
    std::string text = description.Text();
    if (text.empty()) text = std::string(what) + " non è riuscito (" + CodeText(result) + ").";
    return Error(text, result, source.Text());
}

std::string CodeText(HRESULT result) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += kDigits[(static_cast<std::uint32_t>(result) >> shift) & 0xF];
    }
    return text;
}

}  // namespace vlm::com
