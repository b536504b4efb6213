#include <gtest/gtest.h>

#include "support/ArchiveHost.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

TEST(ParametersOfSpecialist, AreThoseOfTheOneWhoWasLoaded) {
    test::ArchiveHost host(
        "INSERT INTO ParametroSpecialista VALUES (7, 'INPSUtente', 'anna'), (8, 'INPSUtente', 'ugo'),"
        " (7, 'inpsUTENTE', 'secondo'), (7, 'Vuoto', NULL), (8, 'Altro', 'x');");
    const auto parameters = host.components.NewParameterStore();
    EXPECT_THROW(parameters->Load(7, 0), Error);
    parameters->SetConnection(host.connection);
    parameters->SetLockService(host.lockService);
    EXPECT_TRUE(data::IsNull(parameters->Parameter("INPSUtente")));
    const struct {
        int specialist;
        const char *name, *value;
    } cases[] = {{7, "INPSUtente", "anna"}, {7, "inpsutente", "anna"}, {7, "Vuoto", ""},     {7, "Altro", ""},
                 {8, "INPSUtente", "ugo"},  {8, "Altro", "x"},         {9, "INPSUtente", ""}};
    for (const auto& each : cases) {
        parameters->Load(each.specialist, 0);
        EXPECT_EQ(data::TextOf(parameters->Parameter(each.name)), each.value) << each.specialist << each.name;
    }
}

}  // namespace
}  // namespace vlm::host
