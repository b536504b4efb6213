#pragma once

#include <functional>
#include <gtest/gtest.h>

#include "Module.h"
#include "ado/ConnectionObject.h"
#include "automation/LateBound.h"
#include "server/VlmASLServicesLib.h"
#include "support/Caught.h"
#include "support/FakeConnection.h"
#include "support/FakeServices.h"
#include "support/ForeignObject.h"

namespace vlm::test {

/// A new object of one of the library's classes, by way of its class factory.
template <typename Interface = IDispatch>
com::Ref<Interface> Create(const GUID& classId, const GUID& iid = com::kIdOf<Interface>) {
    com::Ref<IClassFactory> factory;
    EXPECT_EQ(DllGetClassObject(classId, com::kIdOf<IClassFactory>, factory.ReceiveAny()), S_OK);
    com::Ref<Interface> made;
    EXPECT_EQ(factory->CreateInstance(nullptr, iid, made.ReceiveAny()), S_OK);
    return made;
}

/// An object of the host's that notes what is called of it: a help object, or a listener to the import's events.
class NotingObject final : public com::DispatchObject<IDispatch> {
public:
    NotingObject(const GUID& offered, int& alive) : offered_(offered), alive_(alive) { ++alive_; }
    std::string calls;
    std::function<void()> onNumber;
    HRESULT answer = S_OK;  // to numbers

private:
    ~NotingObject() override { --alive_; }
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
    void* Find(const IID& iid) noexcept override {
        return com::Same(iid, offered_) ? static_cast<IDispatch*>(this) : DispatchObject::Find(iid);
    }

    const GUID offered_;
    int& alive_;
};

/// The library on services of a test. Whatever a test does, no object of the library outlives it, and none of the
/// host's is kept once the host is taken away.
class ServerTest : public ::testing::Test {
protected:
    ServerTest() { server::Module::Get().SetServices(services.With(services.toolkit)); }
    ~ServerTest() override {
        EXPECT_EQ(VlmSetHost(nullptr), S_OK);
        EXPECT_EQ(DllCanUnloadNow(), S_OK);
        EXPECT_EQ(world.alive, 0);
        EXPECT_EQ(marked, 0);
    }

    /// A connection of the host's that shows nothing of itself but its members.
    com::Ref<IDispatch> ForeignConnection() {
        return com::Make<ForeignObject>(com::Make<data::ado::ConnectionObject>(database), world);
    }
    /// The code that a call fails with.
    template <typename Body>
    static HRESULT CodeOf(Body body) {
        return static_cast<HRESULT>(Caught(body).Number());
    }
    com::Ref<IDispatch> Marked(const GUID& id) { return com::Make<MarkedObject>(id, marked); }

    FakeServices services;
    const std::shared_ptr<test::FakeConnection> database = std::make_shared<test::FakeConnection>();
    Foreign world;
    int marked = 0;
};

}  // namespace vlm::test
