#include "ServerFixture.h"

namespace vlm::server {
namespace {

using WithoutServicesTest = test::ServerTest;

TEST_F(WithoutServicesTest, AFailureSaysSo) {
    ASSERT_EQ(VlmSetServices(nullptr), S_OK);
    const com::LateBound component(test::Create(kASLExportClass));
    component.PutRef("Connection", ForeignConnection().Get());
    const std::string text = test::CaughtText([&] { component.Call("ShowDialog"); });
    EXPECT_NE(text.find("L'applicazione ospite non ha fornito i suoi servizi"), std::string::npos) << text;
}

}  // namespace
}  // namespace vlm::server
