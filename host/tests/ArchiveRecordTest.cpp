#include <gtest/gtest.h>

#include "ArchiveRecord.h"
#include "support/ArchiveHost.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::host {
namespace {

using data::testing::ErrorText;
using data::testing::RowText;

constexpr const char* kArchive =
    "INSERT INTO Paziente (IDPaziente, Cognome, Nome, DataNascita, CodiceFiscale, NonIscrittoASL) VALUES"
    " (12, 'Rossi', 'Anna', '1980-05-01', 'RSSNNA80E41H501X', 1), (40, 'Verdi', NULL, '1970-01-31 00:00:00', NULL, 0);"
    "INSERT INTO EsenzionePerPaziente VALUES (5, 1, 12, '2026-01-01', '2026-12-31');";
constexpr const char* kAllPatients = "SELECT IDPaziente, Cognome FROM Paziente ORDER BY IDPaziente";
constexpr const char* kLocks = "SELECT Tabella, Chiave, Utente, Dal FROM BloccoRecord";

class ArchiveRecordTest : public testing::Test {
protected:
    std::unique_ptr<ArchiveRecord> Patient(HostObjectPtr lockService = nullptr) {
        auto record = std::make_unique<ArchiveRecord>(kPatients);
        record->SetConnection(host.connection);
        record->SetSecurity(lockService == nullptr ? host.lockService : lockService, host.rights);
        return record;
    }
    std::string Query(const char* sql) { return RowText(*host.connection, sql); }

    test::ArchiveHost host{kArchive};
};

TEST_F(ArchiveRecordTest, ANewRecordGetsTheNextKeyWhenItIsSaved) {
    const auto patient = Patient();
    patient->AddNew();
    patient->SetField("COGNOME", std::string("D'Alò"));
    patient->SetField("DataNascita", std::string("29/02/2012"));
    patient->SetField("NonIscrittoASL", std::int64_t{0});
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_EQ(Query(kAllPatients), "12|Rossi;40|Verdi");
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(patient->Id(), 41);
    const char* const stored =
        "SELECT IDPaziente, Cognome, DataNascita, NonIscrittoASL, Nome FROM Paziente WHERE IDPaziente = 41";
    EXPECT_EQ(Query(stored), "41|D'Alò|29/02/2012|0|NULL");
    EXPECT_EQ(data::TextOf(patient->Field("cognome")), "D'Alò");

    patient->SetField("Nome", std::string("Zoè"));  // the same record goes on
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(Query(stored), "41|D'Alò|29/02/2012|0|Zoè");
    patient->AddNew();
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(patient->Id(), 42);
    EXPECT_EQ(Query(kLocks), "");
}

TEST_F(ArchiveRecordTest, ALoadedRecordIsChangedInPlaceAndLockedMeanwhile) {
    {
        const auto patient = Patient();
        patient->Load(12, true);
        EXPECT_EQ(patient->Id(), 12);
        EXPECT_EQ(data::TextOf(patient->Field("DataNascita")), "01/05/1980");
        EXPECT_EQ(Query(kLocks), "Paziente|12|MARIA|23/11/2026");
        patient->SetField("Revocato", true);
        patient->SetField("DataNascita", data::Value());
        EXPECT_TRUE(patient->Save());
        EXPECT_EQ(Query("SELECT Cognome, DataNascita, CodiceFiscale, Revocato FROM Paziente WHERE IDPaziente = 12"),
                  "Rossi|NULL|RSSNNA80E41H501X|-1");
        EXPECT_EQ(Query(kLocks), "Paziente|12|MARIA|23/11/2026");
        patient->Load(40, true);
        EXPECT_EQ(Query(kLocks), "Paziente|40|MARIA|23/11/2026");
    }
    EXPECT_EQ(Query(kLocks), "");
}

TEST_F(ArchiveRecordTest, WhatIsNotThereLeavesNoKeyAndNoLock) {
    const auto patient = Patient();
    patient->Load(13, true);
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_EQ(Query(kLocks), "");
    EXPECT_THROW(patient->Field("Cognome"), Error);
    EXPECT_THROW(patient->Save(), Error);
}

TEST_F(ArchiveRecordTest, ARecordOfAnotherUserIsRefused) {
    const auto hers = Patient();
    hers->Load(12, true);
    const auto his = Patient(host.LockServiceOf("ROSSI"));
    EXPECT_EQ(ErrorText([&] { his->Load(12, true); }), "Il paziente n. 12 è bloccato da MARIA dal 23/11/2026.");
    EXPECT_THROW(his->Save(), Error);
    his->Load(12, false);
    EXPECT_EQ(his->Id(), 12);
    his->Load(40, true);
    EXPECT_EQ(his->Id(), 40);

    const auto again = Patient();  // the holder's other windows may
    again->Load(12, true);
    EXPECT_EQ(again->Id(), 12);

    host.connection->Execute("INSERT INTO BloccoRecord VALUES ('EsenzionePerPaziente', 5, 'VERDI', NULL)");
    ArchiveRecord exemption(kPatientExemptions);
    exemption.SetConnection(host.connection);
    exemption.SetSecurity(host.lockService, host.rights);
    EXPECT_EQ(ErrorText([&] { exemption.Load(5, true); }), "L'esenzione del paziente n. 5 è bloccata da VERDI.");
}

/// Another user takes the record between this one's look and his own taking, as on a server where both may look first.
class OvertakenConnection final : public data::Connection {
public:
    explicit OvertakenConnection(data::ConnectionPtr inner) : inner_(std::move(inner)) {}

    bool IsOpen() const override { return true; }
    std::string InitialCatalog() const override { return inner_->InitialCatalog(); }
    data::RecordsetPtr Open(std::string_view sql) override { return inner_->Open(sql); }
    std::int64_t Execute(std::string_view sql) override {
        inner_->Execute("INSERT INTO BloccoRecord VALUES ('Paziente', 12, 'ROSSI', '2026-11-23')");
        return inner_->Execute(sql.substr(0, sql.find(" WHERE NOT EXISTS")));
    }
    void BeginTransaction() override {}
    void CommitTransaction() override {}
    void RollbackTransaction() override {}

private:
    data::ConnectionPtr inner_;
};

TEST_F(ArchiveRecordTest, OfTwoUsersAtOnceOneGetsTheRecord) {
    const auto overtaken = std::make_shared<OvertakenConnection>(host.connection);
    const auto locks = server::HostReference::Of(com::Make<LockService>(overtaken, "MARIA", host.clock).Get());
    EXPECT_NE(ErrorText([&] { Patient(locks)->Load(12, true); }).find("ROSSI"), std::string::npos);
    EXPECT_EQ(Query(kLocks), "Paziente|12|ROSSI|23/11/2026");
    host.connection->Execute("DROP TABLE BloccoRecord");
    EXPECT_NE(ErrorText([&] { Patient(locks)->Load(12, true); }).find("BloccoRecord"), std::string::npos);
}

TEST_F(ArchiveRecordTest, TheLockGoesWithTheLastOfItsHolders) {
    auto first = Patient();
    first->Load(12, true);
    {
        const auto second = Patient();
        second->Load(12, true);
    }
    EXPECT_EQ(Query(kLocks), "Paziente|12|MARIA|23/11/2026");
    first.reset();
    EXPECT_EQ(Query(kLocks), "");

    // One that an earlier run left behind is taken over.
    host.connection->Execute("INSERT INTO BloccoRecord VALUES ('Paziente', 40, 'maria', '2026-11-01')");
    first = Patient();
    first->Load(40, true);
    first.reset();
    EXPECT_EQ(Query(kLocks), "");
}

TEST_F(ArchiveRecordTest, LocksEndWellHoweverTheTransactionEnds) {
    enum End { CommitBefore, CommitAfter, RollBackBefore, RollBackAfter };
    for (const End end : {CommitBefore, CommitAfter, RollBackBefore, RollBackAfter}) {
        host.connection->BeginTransaction();
        auto patient = Patient();
        patient->Load(12, true);
        patient->SetField("Nome", std::string(end <= CommitAfter ? "tenuto" : "perso"));
        EXPECT_TRUE(patient->Save());
        if (end == CommitAfter || end == RollBackAfter) patient.reset();
        end <= CommitAfter ? host.connection->CommitTransaction() : host.connection->RollbackTransaction();
        patient.reset();
        EXPECT_EQ(Query(kLocks), "") << end;
        EXPECT_EQ(Query("SELECT Nome FROM Paziente WHERE IDPaziente = 12"), "tenuto") << end;
    }
}

TEST_F(ArchiveRecordTest, RecordsWithoutALockServiceAreNotLocked) {
    ArchiveRecord exemption(kPatientExemptions);
    exemption.SetConnection(host.connection);
    exemption.Load(5, true);
    EXPECT_EQ(Query(kLocks), "");
    exemption.SetField("Scadenza", *Date::FromYmd(2027, 12, 31));
    EXPECT_TRUE(exemption.Save());
    EXPECT_EQ(Query("SELECT * FROM EsenzionePerPaziente"), "5|1|12|01/01/2026|31/12/2027");
}

TEST_F(ArchiveRecordTest, RefusesWhatItCannotStore) {
    ArchiveRecord unconnected(kPatients);
    EXPECT_THROW(unconnected.AddNew(), Error);
    EXPECT_THROW(unconnected.Load(12, false), Error);
    const auto patient = Patient();
    EXPECT_THROW(patient->SetField("Nome", std::string("x")), Error);
    patient->Load(12, false);
    EXPECT_EQ(ErrorText([&] { patient->SetField("Nome", std::string("x")); }), "Il paziente n. 12 è in sola lettura.");
    EXPECT_THROW(patient->Save(), Error);

    patient->Load(12, true);
    EXPECT_NE(ErrorText([&] { patient->SetField("Assente", data::Value()); }).find("Assente"), std::string::npos);
    EXPECT_NE(ErrorText([&] { patient->SetField("idpaziente", std::int64_t{7}); }).find("IDPaziente"),
              std::string::npos);
    EXPECT_THROW(patient->SetField("DataScelta", std::string("domani")), TypeMismatchError);
    EXPECT_THROW(patient->SetField("NonIscrittoASL", std::int64_t{40000}), OverflowError);
}

TEST_F(ArchiveRecordTest, AFailingSaveChangesNothing) {
    host.connection->Execute(
        "CREATE TRIGGER Rifiuta BEFORE UPDATE ON Paziente BEGIN SELECT RAISE(ABORT, 'archivio chiuso'); END");
    host.connection->Execute(
        "CREATE TRIGGER RifiutaNuovi BEFORE INSERT ON Paziente BEGIN SELECT RAISE(ABORT, 'archivio chiuso'); END");
    const auto patient = Patient();
    patient->Load(12, true);
    patient->SetField("Cognome", std::string("Bianchi"));
    EXPECT_NE(ErrorText([&] { patient->Save(); }).find("archivio chiuso"), std::string::npos);
    patient->AddNew();
    patient->SetField("Cognome", std::string("Neri"));
    EXPECT_NE(ErrorText([&] { patient->Save(); }).find("archivio chiuso"), std::string::npos);
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_EQ(Query(kAllPatients), "12|Rossi;40|Verdi");

    // A record that somebody has deleted meanwhile is not stored either.
    host.connection->Execute("DROP TRIGGER Rifiuta");
    patient->Load(40, true);
    host.Connect()->Execute("DELETE FROM Paziente WHERE IDPaziente = 40");
    patient->SetField("Nome", std::string("Ugo"));
    EXPECT_THROW(patient->Save(), Error);
    EXPECT_EQ(Query(kAllPatients), "12|Rossi");
}

TEST(SpecialistParameters, AreThoseOfTheOneWhoWasLoaded) {
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
