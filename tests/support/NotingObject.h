#pragma once

#include <functional>

#include "server/VlmASLServicesLib.h"
#include "support/ForeignObject.h"

namespace vlm::test {

/// An object of the host's that notes what is called of it: a help object, or a listener to the import's events.
class NotingObject final : public MarkedObject {
public:
    using MarkedObject::MarkedObject;
    std::string calls;
    std::function<void()> onNumber;
    HRESULT answer = S_OK;  // to numbers

private:
    HRESULT STDMETHODCALLTYPE PutWindow(std::int32_t) {
        calls += "hWnd ";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TakeNumber(std::int32_t number) {
        calls += std::to_string(number) + " ";
        if (onNumber) onNumber();
        return answer;
    }
    std::span<const com::Member> Members() const noexcept override {
        using Self = NotingObject;
        static constexpr std::array kMembers = {
            com::Method<&Self::TakeNumber>("ReadingFile", server::kReadingFileId, VT_EMPTY, {{"Value", VT_I4}}),
            com::Put<&Self::PutWindow>("hWnd", 11, VT_I4),
            com::Method<&Self::TakeNumber>("ShowContext", 12, VT_EMPTY, {{"Context", VT_I4}}),
        };
        return kMembers;
    }
};

}  // namespace vlm::test
