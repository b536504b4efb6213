#include "server/ServerFixture.h"

namespace vlm::server {
namespace {

using WithoutServicesTest = test::ServerTest;

TEST_F(WithoutServicesTest, AFailureSaysSo) {
    ASSERT_EQ(VlmSetServices(nullptr), S_OK);
    const com::LateBound component(test::Create(kASLExportClass));
    component.PutRef("Connection", ForeignConnection().Get());
    try {
        component.Call("ShowDialog");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("L'applicazione ospite non ha fornito i suoi servizi"),
                  std::string::npos);
    }
}

TEST_F(WithoutServicesTest, ThereIsNoRegistryToEnter) {
    EXPECT_EQ(DllRegisterServer(), S_OK);
    EXPECT_EQ(DllUnregisterServer(), S_OK);
}

}  // namespace
}  // namespace vlm::server
