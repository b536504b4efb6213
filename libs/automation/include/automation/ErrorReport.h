#pragma once

#include <string>
#include <string_view>

#include "automation/Guid.h"
#include "values/Error.h"

/// Errors on their way across the border: an Error on this side, a result code with an error object on the other.
namespace vlm::com {

/// The result code of an Error's number: 1 to 65535 are run-time error numbers and become 0x800Axxxx, 0 is E_FAIL, any
/// other number is a result code already.
HRESULT ResultOf(std::int32_t number) noexcept;

/// Leaves an error object for the caller and gives `result` back.
HRESULT Report(HRESULT result, std::string_view description, std::string_view source, const GUID& interfaceId) noexcept;

/// The same for the exception that is being handled: an Error keeps its number, description and, when it has one, its
/// source. Only for use in a catch block.
HRESULT ReportCurrentException(std::string_view source, const GUID& interfaceId) noexcept;

/// Runs the inside of an object's member, out of which no exception comes.
template <typename Body>
HRESULT Guarded(std::string_view source, const GUID& interfaceId, Body&& body) noexcept {
    try {
        body();
        return S_OK;
    } catch (...) {
        return ReportCurrentException(source, interfaceId);
    }
}

/// The Error for a call that failed: the numbers and texts of the thread's error object, which is taken. Without one
/// the text names `what`.
Error TakeError(HRESULT result, std::string_view what);

/// The code as people look it up: "0x80004005".
std::string CodeText(HRESULT result);

}  // namespace vlm::com
