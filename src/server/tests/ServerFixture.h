#pragma once

#include <gtest/gtest.h>

#include "Module.h"
#include "ado/ConnectionObject.h"
#include "automation/LateBound.h"
#include "server/VlmASLServicesLib.h"
#include "support/Caught.h"
#include "support/FakeConnection.h"
#include "support/FakeServices.h"
#include "support/NotingObject.h"

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
