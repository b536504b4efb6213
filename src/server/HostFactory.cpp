#include "HostFactory.h"

#include "HostReferences.h"
#include "values/Error.h"

namespace vlm::server {

namespace {

using com::LateBound;
using com::Variant;

/// The value as automation converts it; throws Error naming the member for one that does not convert.
Variant As(VARTYPE type, const LateBound& object, std::string_view name) {
    const Variant given = object.Get(name);
    Variant value;
    if (FAILED(com::Coerce(given.Get(), type, value))) {
        throw TypeMismatchError("Il valore di " + std::string(name) + " non è del tipo previsto.");
    }
    return value;
}

bool Truth(const LateBound& object, std::string_view name) {
    return As(VT_BOOL, object, name).Get().boolVal != VARIANT_FALSE;
}

std::int32_t Number(const LateBound& object, std::string_view name) { return As(VT_I4, object, name).Get().lVal; }

void PutConnection(const LateBound& object, const data::ConnectionPtr& connection) {
    object.PutRef("Connection", com::Ref<IDispatch>::Adopt(HostConnection::ObjectOf(connection)).Get());
}

/// One that was not set is not handed on.
void PutObject(const LateBound& object, std::string_view name, const HostObjectPtr& value) {
    if (value) object.PutRef(name, static_cast<IDispatch*>(value->Native()));
}

/// An element by name: of an indexed property, or of the collection that a property gives.
LateBound Element(const LateBound& object, std::string_view collection, std::string_view name) {
    try {
        return object.ObjectOf(collection, {Variant(name)});
    } catch (const Error& error) {
        if (error.Number() != DISP_E_BADPARAMCOUNT) throw;
    }
    return LateBound(object.ObjectOf(collection).Item(Variant(name)).Object());
}

class Record final : public HostRecord {
public:
    explicit Record(LateBound record) : record_(std::move(record)) {}

    void SetConnection(const data::ConnectionPtr& connection) override { PutConnection(record_, connection); }
    void SetSecurity(const HostObjectPtr& lockService, const HostObjectPtr& rights) override {
        PutObject(record_, "LockSrv", lockService);
        PutObject(record_, "Rights", rights);
    }
    void AddNew() override { record_.Call("AddNew"); }
    void Load(std::int32_t id, bool forEdit) override { record_.Call("Load", {Variant(id), Variant(forEdit)}); }
    data::Value Field(std::string_view name) const override {
        return Element(record_, "Fields", name).Get("Value").Value();
    }
    void SetField(std::string_view name, const data::Value& value) override {
        const auto* number = std::get_if<std::int64_t>(&value);
        const bool narrow = number != nullptr && *number == static_cast<std::int32_t>(*number);
        // Hosts' own languages do not take numbers of 64 bits.
        Element(record_, "Fields", name)
            .Put("Value", narrow ? Variant(static_cast<std::int32_t>(*number)) : com::FromValue(value));
    }
    bool Save() override { return Truth(record_, "Save"); }
    std::int32_t Id() const override { return Number(record_, "ID"); }

private:
    LateBound record_;
};

class Decoder final : public FiscalCodeDecoder {
public:
    explicit Decoder(LateBound decoder) : decoder_(std::move(decoder)) {}

    void SetConnection(const data::ConnectionPtr& connection) override { PutConnection(decoder_, connection); }
    void SetFiscalCode(std::string_view code) override { decoder_.Put("FiscalCode", Variant(code)); }
    std::string BirthDate() const override { return decoder_.Get("BirthDate").Text(); }
    std::string Sex() const override { return decoder_.Get("Sex").Text(); }
    std::int32_t BirthComune() const override { return Number(decoder_, "BirthComune"); }

private:
    LateBound decoder_;
};

class Parameters final : public ParameterStore {
public:
    explicit Parameters(LateBound store) : store_(std::move(store)) {}

    void SetConnection(const data::ConnectionPtr& connection) override { PutConnection(store_, connection); }
    void SetLockService(const HostObjectPtr& lockService) override { PutObject(store_, "LockSrv", lockService); }
    void Load(std::int32_t specialist, std::int32_t kind) override {
        store_.Call("Load", {Variant(specialist), Variant(kind)});
    }
    data::Value Parameter(std::string_view name) const override {
        return Element(store_, "Parameters", name).Get("Value").Value();
    }

private:
    LateBound store_;
};

/// Every element of a collection, as `read` sees it.
template <typename Result>
std::vector<Result> List(const LateBound& object, std::string_view name, Result (*read)(const LateBound&)) {
    std::vector<Result> list;
    for (const Variant& element : object.ObjectOf(name).Elements()) list.push_back(read(LateBound(element.Object())));
    return list;
}

/// What cannot be read of a person is left empty, and the reading goes on.
std::string TextOr(const LateBound& object, std::string_view name) {
    try {
        return object.Get(name).Text();
    } catch (const Error&) {
        return {};
    }
}

Date DateOr(const LateBound& object, std::string_view name) {
    try {
        return Date(As(VT_DATE, object, name).Get().date);
    } catch (const Error&) {
        return {};
    }
}

HealthCardClient::Failure ReadFailure(const LateBound& failure) {
    return {failure.Get("Code").Text(), failure.Get("Description").Text()};
}

HealthCardClient::Exemption ReadExemption(const LateBound& exemption) {
    return {TextOr(exemption, "Code"), DateOr(exemption, "Start"), DateOr(exemption, "End")};
}

HealthCardClient::Person ReadPerson(const LateBound& person) {
    HealthCardClient::Person read{TextOr(person, "FiscalCode"),
                                  TextOr(person, "Surname"),
                                  TextOr(person, "FirstName"),
                                  DateOr(person, "ChoiceDate"),
                                  DateOr(person, "ExpiryDate"),
                                  DateOr(person, "SuspensionDate"),
                                  {}};
    try {
        read.exemptions = List(person, "Exemptions", ReadExemption);
    } catch (const Error&) {  // as a person without exemptions
    }
    return read;
}

class CardClient final : public HealthCardClient {
public:
    /// `factory` makes the requests.
    CardClient(LateBound client, LateBound factory) : client_(std::move(client)), factory_(std::move(factory)) {}

    void SetToolPath(const std::string& path) override { client_.Put("ToolPath", Variant(path)); }
    void SetCertificatePath(const std::string& path) override { client_.Put("CertificatePath", Variant(path)); }
    Response RequestPatients(const Credentials& credentials) override { return Ask("RequestPatients", credentials); }
    Response RequestExemptions(const Credentials& credentials) override {
        return Ask("RequestExemptions", credentials);
    }

private:
    Response Ask(std::string_view operation, const Credentials& given) const {
        const LateBound request = factory_.ObjectOf("HealthCardRequest");
        const LateBound credentials = request.ObjectOf("Credentials");
        credentials.Put("UserId", Variant(given.userId));
        credentials.Put("Password", Variant(given.password));
        credentials.Put("ASLCode", Variant(given.aslCode));
        credentials.Put("RegionCode", Variant(given.regionCode));
        credentials.Put("PIN", Variant(given.pin));
        const LateBound response = client_.ObjectOf(operation, {Variant(request.Object().Get())});
        if (Truth(response, "Error")) return {true, List(response, "Errors", ReadFailure), {}};
        return {false, {}, List(response, "Persons", ReadPerson)};
    }

    LateBound client_, factory_;
};

}  // namespace

std::unique_ptr<HostRecord> HostFactory::NewPatientRecord() {
    if (!factory_.Has("PatientRecord")) return own_.NewPatientRecord();
    return std::make_unique<Record>(factory_.ObjectOf("PatientRecord"));
}

std::unique_ptr<HostRecord> HostFactory::NewExemptionRecord() {
    if (!factory_.Has("ExemptionRecord")) return own_.NewExemptionRecord();
    return std::make_unique<Record>(factory_.ObjectOf("ExemptionRecord"));
}

std::unique_ptr<FiscalCodeDecoder> HostFactory::NewFiscalCodeDecoder() {
    if (!factory_.Has("FiscalCodeDecoder")) return own_.NewFiscalCodeDecoder();
    return std::make_unique<Decoder>(factory_.ObjectOf("FiscalCodeDecoder"));
}

std::unique_ptr<ParameterStore> HostFactory::NewParameterStore() {
    if (!factory_.Has("ParameterStore")) return own_.NewParameterStore();
    return std::make_unique<Parameters>(factory_.ObjectOf("ParameterStore"));
}

std::unique_ptr<HealthCardClient> HostFactory::NewHealthCardClient() {
    if (!factory_.Has("HealthCardClient")) return own_.NewHealthCardClient();
    return std::make_unique<CardClient>(factory_.ObjectOf("HealthCardClient"), factory_);
}

}  // namespace vlm::server
