#include <objbase.h>

#include "Win32User.h"
#include "support/Caught.h"
#include "support/SampleDialog.h"
#include "support/ToolkitContract.h"

namespace vlm::ui::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, ToolkitContract,
                         ::testing::Values(WindowedToolkit{"Win32", [](const auto& words, EventLog& log) {
                                                               return std::unique_ptr<Toolkit>(
                                                                   std::make_unique<Win32User>(words, log));
                                                           }}));

}  // namespace
}  // namespace vlm::ui::test
