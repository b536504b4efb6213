#include <gtest/gtest.h>

#include "archive/ArchiveRecord.h"
#include "support/ArchiveHost.h"
#include "support/FakeConnection.h"
#include "support/RowText.h"
#include "values/Error.h"

namespace vlm::archive {
namespace {

using data::testing::ErrorText;
using data::testing::RowText;

constexpr const char* kArchive =
    "INSERT INTO Paziente (IDPaziente, Cognome, Nome, DataNascita, CodiceFiscale, NonIscrittoASL) VALUES"
    " (12, 'Rossi', 'Anna', '1980-05-01', 'RSSNNA80E41H501X', 1), (40, 'Verdi', NULL, '1970-01-31 00:00:00', NULL, 0);"
    "INSERT INTO EsenzionePerPaziente VALUES (5, 1, 12, '2026-01-01', '2026-12-31');"
    "INSERT INTO BloccoRecord VALUES ('EsenzionePerPaziente', 5, 'VERDI', NULL)";
constexpr const char* kAllPatients = "SELECT IDPaziente, Cognome FROM Paziente ORDER BY IDPaziente";

class ArchiveRecordTest : public testing::Test {
protected:
    std::unique_ptr<ArchiveRecord> Record(const ArchiveTable& table, const HostObjectPtr& lockService) {
        auto record = std::make_unique<ArchiveRecord>(table);
        record->SetConnection(host.connection);
        record->SetSecurity(lockService, host.rights);
        return record;
    }
    std::unique_ptr<ArchiveRecord> Patient() { return Record(kPatients, host.lockService); }
    std::string Query(const char* sql) { return RowText(*host.connection, sql); }
    std::string Locks() { return Query("SELECT Chiave, Utente, Dal FROM BloccoRecord WHERE Tabella = 'Paziente'"); }

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
    EXPECT_EQ(data::TextOf(patient->Field("cognome")), "D'Alò");
    patient->SetField("Nome", std::string("Zoè"));  // the same record goes on
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(Query("SELECT Cognome, DataNascita, NonIscrittoASL, Nome FROM Paziente WHERE IDPaziente = 41"),
              "D'Alò|29/02/2012|0|Zoè");
    patient->AddNew();
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(patient->Id(), 42);
    EXPECT_EQ(Locks(), "");
}

TEST_F(ArchiveRecordTest, ALoadedRecordIsChangedInPlaceAndLockedMeanwhile) {
    auto patient = Patient();
    patient->Load(12, true);
    EXPECT_EQ(patient->Id(), 12);
    EXPECT_EQ(data::TextOf(patient->Field("DataNascita")), "01/05/1980");
    patient->SetField("Revocato", true);
    patient->SetField("DataNascita", data::Value());
    EXPECT_TRUE(patient->Save());
    EXPECT_EQ(Query("SELECT Cognome, DataNascita, CodiceFiscale, Revocato FROM Paziente WHERE IDPaziente = 12"),
              "Rossi|NULL|RSSNNA80E41H501X|-1");
    EXPECT_EQ(Locks(), "12|MARIA|23/11/2026");
    patient->Load(40, true);
    EXPECT_EQ(Locks(), "40|MARIA|23/11/2026");
    patient->Load(13, true);  // nobody
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_EQ(Locks(), "");
    EXPECT_THROW(patient->Field("Cognome"), Error);
    EXPECT_THROW(patient->Save(), Error);

    const auto exemption = Record(kPatientExemptions, nullptr);  // without a lock service there are no locks
    exemption->Load(5, true);
    exemption->SetField("Scadenza", *Date::FromYmd(2027, 12, 31));
    EXPECT_TRUE(exemption->Save());
    EXPECT_EQ(Query("SELECT * FROM EsenzionePerPaziente"), "5|1|12|01/01/2026|31/12/2027");
}

TEST_F(ArchiveRecordTest, ARecordOfAnotherUserIsRefused) {
    const auto hers = Patient();
    hers->Load(12, true);
    const auto his = Record(kPatients, host.LockServiceOf("ROSSI"));
    EXPECT_EQ(ErrorText([&] { his->Load(12, true); }), "Il paziente n. 12 è bloccato da MARIA dal 23/11/2026.");
    EXPECT_THROW(his->Save(), Error);
    his->Load(12, false);
    EXPECT_EQ(his->Id(), 12);
    his->Load(40, true);
    EXPECT_EQ(his->Id(), 40);
    EXPECT_EQ(ErrorText([&] { Record(kPatientExemptions, host.lockService)->Load(5, true); }),
              "L'esenzione del paziente n. 5 è bloccata da VERDI.");
}

/// Another user takes the record between this one's look and his own taking, as on a server where both may look first.
class OvertakenConnection final : public test::FakeConnection {
public:
    explicit OvertakenConnection(data::ConnectionPtr inner) : inner_(std::move(inner)) {}

    data::RecordsetPtr Open(std::string_view sql) override { return inner_->Open(sql); }
    std::int64_t Execute(std::string_view sql) override {
        inner_->Execute("INSERT INTO BloccoRecord VALUES ('Paziente', 12, 'ROSSI', '2026-11-23')");
        return inner_->Execute(sql.substr(0, sql.find(" WHERE NOT EXISTS")));
    }

private:
    data::ConnectionPtr inner_;
};

TEST_F(ArchiveRecordTest, OfTwoUsersAtOnceOneGetsTheRecord) {
    const auto overtaken = std::make_shared<OvertakenConnection>(host.connection);
    const auto locks = server::HostReference::Of(com::Make<host::LockService>(overtaken, "MARIA", host.clock).Get());
    EXPECT_NE(ErrorText([&] { Record(kPatients, locks)->Load(12, true); }).find("ROSSI"), std::string::npos);
    EXPECT_EQ(Locks(), "12|ROSSI|23/11/2026");
    host.connection->Execute("DROP TABLE BloccoRecord");
    EXPECT_NE(ErrorText([&] { Record(kPatients, locks)->Load(12, true); }).find("BloccoRecord"), std::string::npos);
}

TEST_F(ArchiveRecordTest, TheLockGoesWithTheLastOfItsHolders) {
    // One that an earlier run left behind is taken over.
    host.connection->Execute("INSERT INTO BloccoRecord VALUES ('Paziente', 12, 'maria', '2026-11-01')");
    auto first = Patient(), second = Patient();
    first->Load(12, true);
    second->Load(12, true);
    second.reset();
    EXPECT_EQ(Query("SELECT Chiave FROM BloccoRecord WHERE Tabella = 'Paziente'"), "12");
    first.reset();
    EXPECT_EQ(Locks(), "");
}

TEST_F(ArchiveRecordTest, LocksEndWellHoweverTheTransactionEnds) {
    for (const auto& [commits, letGoBefore] : {std::pair{true, false}, {true, true}, {false, false}, {false, true}}) {
        host.connection->BeginTransaction();
        auto patient = Patient();
        patient->Load(12, true);
        patient->SetField("Nome", std::string(commits ? "tenuto" : "perso"));
        EXPECT_TRUE(patient->Save());
        if (letGoBefore) patient.reset();
        commits ? host.connection->CommitTransaction() : host.connection->RollbackTransaction();
        patient.reset();
        EXPECT_EQ(Locks(), "") << commits << letGoBefore;
        EXPECT_EQ(Query("SELECT Nome FROM Paziente WHERE IDPaziente = 12"), "tenuto") << commits << letGoBefore;
    }
}

TEST_F(ArchiveRecordTest, RefusesWhatItCannotStore) {
    EXPECT_THROW(ArchiveRecord(kPatients).Load(12, false), Error) << "no connection";
    const auto patient = Patient();
    patient->Load(12, false);
    EXPECT_EQ(ErrorText([&] { patient->SetField("Nome", std::string("x")); }), "Il paziente n. 12 è in sola lettura.");
    EXPECT_THROW(patient->Save(), Error);
    patient->Load(12, true);
    for (const char* field : {"Assente", "IDPaziente"}) {
        const std::string error = ErrorText([&] { patient->SetField(field, std::int64_t{7}); });
        EXPECT_NE(error.find(field), std::string::npos) << error;
    }
}

TEST_F(ArchiveRecordTest, AFailingSaveChangesNothing) {
    for (const char* event : {"UPDATE", "INSERT"}) {
        host.connection->Execute(std::string("CREATE TRIGGER Rifiuta") + event + " BEFORE " + event +
                                 " ON Paziente BEGIN SELECT RAISE(ABORT, 'archivio chiuso'); END");
    }
    const auto patient = Patient();
    patient->Load(12, true);
    patient->SetField("Cognome", std::string("Bianchi"));
    EXPECT_NE(ErrorText([&] { patient->Save(); }).find("archivio chiuso"), std::string::npos);
    patient->AddNew();
    patient->SetField("Cognome", std::string("Neri"));
    EXPECT_NE(ErrorText([&] { patient->Save(); }).find("archivio chiuso"), std::string::npos);
    EXPECT_EQ(patient->Id(), 0);
    EXPECT_EQ(Query(kAllPatients), "12|Rossi;40|Verdi");
}

TEST(SpecialistParameters, AreThoseOfTheOneWhoWasLoaded) {
    test::ArchiveHost host(
        "INSERT INTO ParametroSpecialista VALUES (7, 'INPSUtente', 'anna'), (8, 'INPSUtente', 'ugo'),"
        " (7, 'inpsUTENTE', 'secondo'), (7, 'Vuoto', NULL), (8, 'Altro', 'x');");
    const auto parameters = host.components.NewParameterStore();
    EXPECT_THROW(parameters->Load(7, 0), Error);
    parameters->SetConnection(host.connection);
    EXPECT_TRUE(data::IsNull(parameters->Parameter("INPSUtente")));
    for (const auto& [specialist, name, value] : {std::tuple{7, "inpsutente", "anna"},
                                                  {7, "Vuoto", ""},
                                                  {7, "Altro", ""},
                                                  {8, "INPSUtente", "ugo"},
                                                  {9, "INPSUtente", ""}}) {
        parameters->Load(specialist, 0);
        EXPECT_EQ(data::TextOf(parameters->Parameter(name)), value) << specialist << name;
    }
}

}  // namespace
}  // namespace vlm::archive
