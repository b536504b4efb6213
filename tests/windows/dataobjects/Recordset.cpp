#include "dataobjects/Recordset.h"

#include <array>
#include <vector>

#include "automation/Variant.h"
#include "dataobjects/DataObjects.h"

namespace vlm::test::dataobjects {

namespace {

/// How the data objects call the types of columns, in the order of data::FieldType.
constexpr DataTypeEnum kTypes[] = {adBoolean, adSmallInt, adInteger,     adBigInt,
                                   adDouble,  adCurrency, adDBTimeStamp, adVarWChar};

class FieldObject final : public Dual<::Field, Field20, _ADO> {
public:
    FieldObject(com::Ref<Recordset> rows, int ordinal) : rows_(std::move(rows)), ordinal_(ordinal) {}

    HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) override {
        return Done([&] { Give(name, std::string(rows_->Rows().FieldName(ordinal_))); });
    }
    HRESULT STDMETHODCALLTYPE get_Type(DataTypeEnum* type) override {
        return Done([&] { Give(type, kTypes[static_cast<std::size_t>(rows_->Rows().TypeOf(ordinal_))]); });
    }
    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override {
        return Done([&] { rows_->Read(ordinal_, value); });
    }
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT value) override {
        return Done([&] { rows_->Write(ordinal_, value); });
    }

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
        return Done([&] { Give(field, com::Ref(new FieldObject(rows_, PlaceOf(index, Count()))).Detach()); });
    }

private:
    int Count() const { return rows_->IsOpen() ? rows_->Rows().FieldCount() : 0; }

    com::Ref<Recordset> rows_;
};

}  // namespace

Recordset::Recordset(com::Ref<Connection> connection, data::RecordsetPtr rows)
    : connection_(std::move(connection)), rows_(std::move(rows)) {}

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
    if (value != nullptr) *value = com::FromValue(row.ValueOf(ordinal), row.TypeOf(ordinal)).Detach();
}

void Recordset::Write(int ordinal, const VARIANT& value) {
    Edited();
    Row();
    edited_->SetValue(ordinal, com::ToValue(value));
    if (mode_ == adEditNone) mode_ = adEditInProgress;
}

HRESULT Recordset::Open(VARIANT source, VARIANT connection, CursorTypeEnum cursor, LockTypeEnum lock, LONG) {
    return Done([&] {
        if (rows_) throw Numbered(adErrObjectOpen, "L'operazione non è consentita se l'oggetto è aperto.");
        auto* const own = dynamic_cast<Connection*>(connection.pdispVal);
        if (own == nullptr || source.vt != VT_BSTR || cursor != adOpenKeyset || lock != adLockOptimistic) {
            throw Numbered(adErrInvalidArgument, "Si aprono solo tabelle da modificare.");
        }
        connection_ = com::Ref(own);  // an error is told there
        data::UpdatableRecordsetPtr rows = own->Native()->OpenForUpdate(com::ToUtf8(source.bstrVal));
        edited_ = rows.get();
        rows_ = std::move(rows);
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

HRESULT Recordset::get_Fields(::Fields** fields) {
    return Give(fields, com::Ref(new FieldList(com::Ref(this))).Detach());
}

HRESULT Recordset::get_EOF(VARIANT_BOOL* end) {
    return Done([&] { Give(end, Rows().AtEnd() ? VARIANT_TRUE : VARIANT_FALSE); });
}

HRESULT Recordset::GetRows(LONG count, VARIANT, VARIANT, VARIANT* block) {
    if (block == nullptr) return E_POINTER;
    if (WithoutBlocks::alive > 0) return E_NOTIMPL;
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

HRESULT Recordset::NextRecordset(VARIANT*, _Recordset** next) {
    if (next == nullptr) return E_POINTER;
    *next = nullptr;
    return Done([&] {
        const bool more = Rows().NextRecordset();
        data::RecordsetPtr rows = std::move(rows_);
        if (more) *next = com::Ref(new Recordset(connection_, std::move(rows))).Detach();
    });
}

HRESULT Recordset::AddNew(VARIANT, VARIANT) {
    return Done([&] {
        Edited();
        Store();
        edited_->AddNew();
        mode_ = adEditAdd;
    });
}

HRESULT Recordset::Update(VARIANT, VARIANT) {
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
