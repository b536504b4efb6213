#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/Connection.h"
#include "values/Date.h"

/// What the library needs of the host's own components, as interfaces. The host implements them.
namespace vlm {

/// The host's shared utility object. Its null-tolerant reads `TextOf` and `NumberOf` are those of data::Recordset and
/// data::Value; here stands the rest.
class HostUtility {
public:
    virtual ~HostUtility() = default;
    /// A folder in which the host lets the library write, without "\" at its end.
    virtual std::string WorkFolder() const = 0;
    /// A complete SQL date literal, quotes included, with the time of day when the date has one. `option` 0 is the
    /// only form the library asks for.
    virtual std::string SqlDate(Date date, int option = 0) const = 0;
    /// A complete SQL text literal in single quotes, quotes inside doubled.
    virtual std::string SqlString(std::string_view value) const = 0;
};

/// The host's help. Both operations may throw; a help request that fails does nothing.
class HelpObject {
public:
    virtual ~HelpObject() = default;
    virtual void SetWindow(std::intptr_t windowHandle) = 0;
    virtual void ShowContext(std::int32_t context) = 0;
};

/// An object of the host's security library (lock service, user rights) that the library only hands on.
class HostObject {
public:
    virtual ~HostObject() = default;
    /// The host's own object: an IDispatch*, no reference added. Null for none.
    virtual void* Native() const noexcept = 0;
};
using HostObjectPtr = std::shared_ptr<HostObject>;

/// A record of the host's archive, stored by the host's own rules: PatientRecord (table Paziente) and ExemptionRecord
/// (table EsenzionePerPaziente). Made for one use: connection, lock service and rights are set first, then the record
/// is added or loaded. A record loaded for edit stays locked until the object is released. Every operation throws
/// Error with the host's description; a record that another user holds is such an error.
class HostRecord {
public:
    virtual ~HostRecord() = default;
    virtual void SetConnection(const data::ConnectionPtr& connection) = 0;
    /// Both may be null.
    virtual void SetSecurity(const HostObjectPtr& lockService, const HostObjectPtr& rights) = 0;
    virtual void AddNew() = 0;
    /// A record that is not there leaves Id() at 0.
    virtual void Load(std::int32_t id, bool forEdit) = 0;
    /// Names compare without regard to case; a name that the record does not have is an Error.
    virtual data::Value Field(std::string_view name) const = 0;
    virtual void SetField(std::string_view name, const data::Value& value) = 0;
    /// False when the host did not store it.
    virtual bool Save() = 0;
    /// 0 when nothing is loaded, and before a new record is saved.
    virtual std::int32_t Id() const = 0;
};

/// What an Italian fiscal code says of its bearer.
class FiscalCodeDecoder {
public:
    virtual ~FiscalCodeDecoder() = default;
    virtual void SetConnection(const data::ConnectionPtr& connection) = 0;
    /// Throws Error for a code that is not valid; the values stay as they were.
    virtual void SetFiscalCode(std::string_view code) = 0;
    /// dd/mm/yyyy; "" before a valid code.
    virtual std::string BirthDate() const = 0;
    /// "M" or "F"; "" before a valid code.
    virtual std::string Sex() const = 0;
    /// 0 for a foreign state, a comune that is not in the archive, and before a valid code.
    virtual std::int32_t BirthComune() const = 0;
};

/// The parameters that the host keeps for each specialist.
class ParameterStore {
public:
    virtual ~ParameterStore() = default;
    virtual void SetConnection(const data::ConnectionPtr& connection) = 0;
    virtual void SetLockService(const HostObjectPtr& lockService) = 0;
    /// `kind` 0 is the only one that the library asks for.
    virtual void Load(std::int32_t specialist, std::int32_t kind) = 0;
    /// Null when the specialist has no parameter of that name.
    virtual data::Value Parameter(std::string_view name) const = 0;
};

/// The client of the national health-card system. Errors of transport and tool throw Error.
class HealthCardClient {
public:
    struct Credentials {
        std::string userId, password, pin, aslCode, regionCode;
    };
    struct Failure {
        std::string code, description;
    };
    struct Exemption {
        std::string code;
        Date start, end;
    };
    struct Person {
        std::string fiscalCode, surname, firstName;
        Date choice, expiry, suspension;
        std::vector<Exemption> exemptions;
    };
    struct Response {
        bool error = false;
        std::vector<Failure> errors;
        std::vector<Person> persons;
    };

    virtual ~HealthCardClient() = default;
    virtual void SetToolPath(const std::string& path) = 0;
    virtual void SetCertificatePath(const std::string& path) = 0;
    virtual Response RequestPatients(const Credentials& credentials) = 0;
    virtual Response RequestExemptions(const Credentials& credentials) = 0;
};

/// Makes the host's components; each object is made for one use.
class HostComponents {
public:
    virtual ~HostComponents() = default;
    virtual std::unique_ptr<HostRecord> NewPatientRecord() = 0;
    virtual std::unique_ptr<HostRecord> NewExemptionRecord() = 0;
    virtual std::unique_ptr<FiscalCodeDecoder> NewFiscalCodeDecoder() = 0;
    virtual std::unique_ptr<ParameterStore> NewParameterStore() = 0;
    virtual std::unique_ptr<HealthCardClient> NewHealthCardClient() = 0;
};

}  // namespace vlm
