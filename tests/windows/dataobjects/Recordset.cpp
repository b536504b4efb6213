#include "dataobjects/Recordset.h"

#include <array>
#include <type_traits>
#include <vector>

#include "dataobjects/DataObjects.h"

namespace vlm::test::dataobjects {

namespace {

constexpr LCID kItalian = 0x0410;

/// How a column is called by the data objects, and how its values travel.
struct Kind {
    DataTypeEnum type;
    VARTYPE variant;
};

Kind KindOf(data::FieldType type) {
    switch (type) {
        case data::FieldType::Boolean:
            return {adBoolean, VT_BOOL};
        case data::FieldType::SmallInt:
            return {adSmallInt, VT_I2};
        case data::FieldType::Integer:
            return {adInteger, VT_I4};
        case data::FieldType::BigInt:
            return {adBigInt, VT_I8};
        case data::FieldType::Double:
            return {adDouble, VT_R8};
        case data::FieldType::Currency:
            return {adCurrency, VT_CY};
        case data::FieldType::Date:
            return {adDBTimeStamp, VT_DATE};
        case data::FieldType::Text:
            break;
    }
    return {adVarWChar, VT_BSTR};
}

/// A cell that is not of its column's kind travels as what it is.
VARIANT ToVariant(const data::Value& value, data::FieldType type) {
    VARIANT given;
    VariantInit(&given);
    std::visit(
        [&](const auto& content) {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, std::monostate>) {
                given.vt = VT_NULL;
            } else if constexpr (std::is_same_v<Content, bool>) {
                given.vt = VT_BOOL;
                given.boolVal = content ? VARIANT_TRUE : VARIANT_FALSE;
            } else if constexpr (std::is_same_v<Content, std::int64_t>) {
                given.vt = VT_I8;
                given.llVal = content;
                const VARTYPE width = KindOf(type).variant;
                if (width == VT_I2 || width == VT_I4) VariantChangeType(&given, &given, 0, width);
            } else if constexpr (std::is_same_v<Content, double>) {
                given.vt = VT_R8;
                given.dblVal = content;
            } else if constexpr (std::is_same_v<Content, Currency>) {
                given.vt = VT_CY;
                given.cyVal.int64 = content.Units();
            } else if constexpr (std::is_same_v<Content, Date>) {
                given.vt = VT_DATE;
                given.date = content.Serial();
            } else {
                given.vt = VT_BSTR;
                given.bstrVal = com::Bstr(content).Detach();
            }
        },
        value);
    return given;
}

data::Value ToValue(VARIANT given, data::FieldType type) {
    if (given.vt == VT_NULL || given.vt == VT_EMPTY) return {};
    const VARTYPE kind = KindOf(type).variant;
    VARIANT held;
    VariantInit(&held);
    const VARTYPE wide = kind == VT_I2 || kind == VT_I4 ? static_cast<VARTYPE>(VT_I8) : kind;
    HRESULT changed = VariantChangeTypeEx(&held, &given, kItalian, 0, kind);
    if (SUCCEEDED(changed)) changed = VariantChangeTypeEx(&held, &held, kItalian, 0, wide);
    if (FAILED(changed)) throw Numbered(adErrDataConversion, "Il valore non è del tipo della colonna.");
    switch (wide) {
        case VT_BOOL:
            return held.boolVal != VARIANT_FALSE;
        case VT_I8:
            return std::int64_t{held.llVal};
        case VT_R8:
            return held.dblVal;
        case VT_CY:
            return Currency::FromUnits(held.cyVal.int64);
        case VT_DATE:
            return Date(held.date);
        default:
            break;
    }
    const std::string text = com::ToUtf8(held.bstrVal);
    VariantClear(&held);
    return text;
}

/// A value of a key as a statement has it.
std::string Literal(const data::Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    std::string text = "'";
    for (const char c : data::TextOf(value)) text.append(c == '\'' ? 2 : 1, c);
    return text + "'";
}

class FieldObject final : public Dual<::Field, Field20, _ADO> {
public:
    FieldObject(com::Ref<Recordset> rows, int ordinal) : rows_(std::move(rows)), ordinal_(ordinal) {}

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) override {
        return Done([&] { Give(name, std::string(rows_->Rows().FieldName(ordinal_))); });
    }
    HRESULT STDMETHODCALLTYPE get_Type(DataTypeEnum* type) override {
        return Done([&] { Give(type, KindOf(rows_->Rows().TypeOf(ordinal_)).type); });
    }
    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override {
        return Done([&] { rows_->Read(ordinal_, value); });
    }
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT value) override {
        return Done([&] { rows_->Write(ordinal_, value); });
    }
    VLM_REFUSED(get_Properties, ::Properties**)
    VLM_REFUSED(get_ActualSize, ADO_LONGPTR*)
    VLM_REFUSED_PROPERTY(Attributes, LONG)
    VLM_REFUSED_PROPERTY(DefinedSize, ADO_LONGPTR)
    VLM_REFUSED_PROPERTY(Precision, unsigned char)
    VLM_REFUSED_PROPERTY(NumericScale, unsigned char)
    VLM_REFUSED(put_Type, DataTypeEnum)
    VLM_REFUSED(AppendChunk, VARIANT)
    VLM_REFUSED(GetChunk, LONG, VARIANT*)
    VLM_REFUSED(get_OriginalValue, VARIANT*)
    VLM_REFUSED(get_UnderlyingValue, VARIANT*)
    VLM_REFUSED(get_DataFormat, IUnknown**)
    VLM_REFUSED(putref_DataFormat, IUnknown*)
    VLM_REFUSED(get_Status, LONG*)

private:
    com::Ref<Recordset> rows_;
    int ordinal_;
};

/// None while the row set is closed.
class FieldList final : public Dual<::Fields, Fields20, Fields15, _Collection> {
public:
    explicit FieldList(com::Ref<Recordset> rows) : rows_(std::move(rows)) {}

    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override { return Give(count, Count()); }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, ::Field** field) override {
        return Done([&] {
            const int place = PlaceOf(index, Count(), [&](int ordinal) { return rows_->Rows().FieldName(ordinal); });
            Give(field, com::Ref(new FieldObject(rows_, place)).Detach());
        });
    }
    HRESULT STDMETHODCALLTYPE Refresh() override { return S_OK; }
    VLM_REFUSED(_NewEnum, IUnknown**)
    VLM_REFUSED(_Append, BSTR, DataTypeEnum, ADO_LONGPTR, FieldAttributeEnum)
    VLM_REFUSED(Delete, VARIANT)
    VLM_REFUSED(Append, BSTR, DataTypeEnum, ADO_LONGPTR, FieldAttributeEnum, VARIANT)
    VLM_REFUSED(Update)
    VLM_REFUSED(Resync, ResyncEnum)
    VLM_REFUSED(CancelUpdate)

private:
    int Count() const { return rows_->IsOpen() ? rows_->Rows().FieldCount() : 0; }

    com::Ref<Recordset> rows_;
};

}  // namespace

void TellChanged(VARIANT* affected, LONG changed) {
    if (affected == nullptr || affected->vt == VT_ERROR) return;
    VariantClear(affected);
    affected->vt = VT_I4;
    affected->lVal = changed;
}

Recordset::Recordset(com::Ref<Connection> connection, data::RecordsetPtr rows) {
    Take(std::move(connection), std::move(rows));
}

void Recordset::Take(com::Ref<Connection> connection, data::RecordsetPtr rows) {
    connection_ = std::move(connection);
    native_ = connection_->Native();
    rows_ = std::move(rows);
    none_ = !rows_ || rows_->AtEnd();
}

data::Recordset& Recordset::Rows() const {
    if (!rows_) throw Numbered(adErrObjectClosed, "L'operazione non è consentita se l'oggetto è chiuso.");
    return *rows_;
}

data::Recordset& Recordset::Row() const {
    if (mode_ != adEditAdd && Rows().AtEnd()) throw Numbered(adErrNoCurrentRecord, "Non c'è un record corrente.");
    return Rows();
}

data::UpdatableRecordset& Recordset::Edited() const {
    Rows();
    if (edited_ == nullptr) throw Numbered(adErrFeatureNotAvailable, "Il gruppo di righe è di sola lettura.");
    return *edited_;
}

void Recordset::Read(int ordinal, VARIANT* value) const {
    const data::Recordset& row = Row();
    if (value != nullptr) *value = ToVariant(row.ValueOf(ordinal), row.TypeOf(ordinal));
}

void Recordset::Write(int ordinal, VARIANT value) {
    data::UpdatableRecordset& edited = Edited();
    Row();
    edited.SetValue(ordinal, ToValue(value, edited.TypeOf(ordinal)));
    if (mode_ == adEditNone) mode_ = adEditInProgress;
}

HRESULT Recordset::Open(VARIANT source, VARIANT connection, CursorTypeEnum, LockTypeEnum lock, LONG) {
    return Done([&] {
        if (rows_) throw Numbered(adErrObjectOpen, "L'operazione non è consentita se l'oggetto è aperto.");
        com::Ref<Connection> own;
        if (connection.vt == VT_DISPATCH) own = com::Query<Connection>(connection.pdispVal, Connection::kOwnId);
        if (source.vt != VT_BSTR || !own)
            throw Numbered(adErrInvalidArgument, "Mancano l'istruzione o la connessione.");
        const std::string sql = com::ToUtf8(source.bstrVal);
        connection_ = own;  // an error is told there
        if (lock != adLockOptimistic && lock != adLockPessimistic) return Take(own, own->Native()->Open(sql));
        data::UpdatableRecordsetPtr rows = own->Native()->OpenForUpdate(sql);
        edited_ = rows.get();
        Take(own, std::move(rows));
        constexpr std::string_view kBefore = "SELECT * FROM ";
        table_ = sql.substr(kBefore.size(), sql.find(' ', kBefore.size()) - kBefore.size());
    });
}

HRESULT Recordset::Close() {
    return Done([&] {
        Rows();
        if (mode_ != adEditNone) throw Numbered(adErrIllegalOperation, "C'è una modifica da completare o annullare.");
        edited_ = nullptr;
        rows_.reset();
    });
}

HRESULT Recordset::get_ActiveConnection(VARIANT* connection) {
    if (connection == nullptr) return E_POINTER;
    connection->vt = VT_DISPATCH;
    return Give(&connection->pdispVal, connection_.Share());
}

HRESULT Recordset::get_Fields(::Fields** fields) {
    return Give(fields, com::Ref(new FieldList(com::Ref(this))).Detach());
}

HRESULT Recordset::get_BOF(VARIANT_BOOL* start) {
    return Done([&] { Give(start, Rows().AtEnd() && none_ ? VARIANT_TRUE : VARIANT_FALSE); });
}

HRESULT Recordset::get_EOF(VARIANT_BOOL* end) {
    return Done([&] { Give(end, Rows().AtEnd() ? VARIANT_TRUE : VARIANT_FALSE); });
}

HRESULT Recordset::GetRows(LONG count, VARIANT start, VARIANT fields, VARIANT* block) {
    if (block == nullptr) return E_POINTER;
    if (WithoutBlocks::alive > 0) return E_NOTIMPL;
    if (IsGiven(start) || IsGiven(fields)) return Refuse();
    VariantInit(block);
    return Done([&] {
        const int width = Row().FieldCount();
        std::vector<VARIANT> cells;
        for (LONG row = 0; row != count && !rows_->AtEnd(); ++row, rows_->MoveNext()) {
            for (int i = 0; i < width; ++i) Read(i, &cells.emplace_back());
        }
        std::array<SAFEARRAYBOUND, 2> bounds{};
        bounds[0].cElements = static_cast<ULONG>(width);
        bounds[1].cElements = static_cast<ULONG>(cells.size()) / bounds[0].cElements;
        SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, 2, bounds.data());
        std::array<LONG, 2> place{};
        for (VARIANT& cell : cells) {
            SafeArrayPutElement(array, place.data(), &cell);
            VariantClear(&cell);
            if (++place[0] == width) place = {0, place[1] + 1};
        }
        block->vt = VT_ARRAY | VT_VARIANT;
        block->parray = array;
    });
}

/// What is set and not written is written first, as every move does.
void Recordset::Store() {
    if (mode_ == adEditNone) return;
    Edited().Update();
    mode_ = adEditNone;
}

HRESULT Recordset::MoveNext() {
    return Done([&] {
        Row();
        Store();
        rows_->MoveNext();
    });
}

HRESULT Recordset::NextRecordset(VARIANT* affected, _Recordset** next) {
    if (next == nullptr) return E_POINTER;
    *next = nullptr;
    return Done([&] {
        TellChanged(affected, -1);
        const bool more = Rows().NextRecordset();
        data::RecordsetPtr rows = std::move(rows_);
        if (more) *next = com::Ref(new Recordset(connection_, std::move(rows))).Detach();
    });
}

HRESULT Recordset::AddNew(VARIANT fields, VARIANT values) {
    if (IsGiven(fields) || IsGiven(values)) return Refuse();
    return Done([&] {
        Edited();
        Store();
        edited_->AddNew();
        mode_ = adEditAdd;
    });
}

HRESULT Recordset::Update(VARIANT fields, VARIANT values) {
    if (IsGiven(fields) || IsGiven(values)) return Refuse();
    return Done([&] {
        Edited();
        Store();
    });
}

HRESULT Recordset::CancelUpdate() {
    return Done([&] {
        Edited().CancelUpdate();
        mode_ = adEditNone;
    });
}

HRESULT Recordset::Delete(AffectEnum affected) {
    if (affected != adAffectCurrent || mode_ != adEditNone) return Refuse();
    return Done([&] {
        Edited();
        const data::Recordset& row = Row();
        native_->Execute("DELETE FROM " + table_ + " WHERE " + std::string(row.FieldName(0)) + " = " +
                         Literal(row.ValueOf(0)));
    });
}

namespace {

/// Lives as long as its registration.
class RecordsetFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == __uuidof(IUnknown) || iid == __uuidof(IClassFactory);
        return Give(object, known ? this : nullptr) == S_OK && known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        return outer != nullptr ? CLASS_E_NOAGGREGATION : com::Ref(new Recordset)->QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace

RecordsetClass::RecordsetClass() {
    static RecordsetFactory factory;
    CoInitialize(nullptr);
    CLSID classId{};
    if (FAILED(CLSIDFromProgID(L"ADODB.Recordset", &classId)) ||
        FAILED(CoRegisterClassObject(classId, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &token_))) {
        throw vlm::Error("ADODB.Recordset non si può registrare.");
    }
}

RecordsetClass::~RecordsetClass() {
    CoRevokeClassObject(token_);
    CoUninitialize();
}

}  // namespace vlm::test::dataobjects
