#pragma once

#include <optional>

#include "database/Connection.h"
#include "dataobjects/Dual.h"

namespace vlm::test::dataobjects {

/// One error of the provider's.
class ErrorObject final : public Dual<::Error> {
public:
    explicit ErrorObject(Failure failure) : failure_(std::move(failure)) {}

    HRESULT STDMETHODCALLTYPE get_Number(LONG* number) override { return Give(number, failure_.result); }
    HRESULT STDMETHODCALLTYPE get_Source(BSTR* source) override { return Give(source, failure_.source); }
    HRESULT STDMETHODCALLTYPE get_Description(BSTR* text) override { return Give(text, failure_.text); }
    HRESULT STDMETHODCALLTYPE get_SQLState(BSTR* state) override { return Give(state, std::string("HY000")); }
    HRESULT STDMETHODCALLTYPE get_NativeError(LONG* number) override { return Give(number, failure_.native); }
    VLM_REFUSED(get_HelpFile, BSTR*)
    VLM_REFUSED(get_HelpContext, LONG*)

private:
    Failure failure_;
};

/// What the provider said last.
class ErrorList final : public Dual<::Errors, _Collection> {
public:
    std::optional<Failure> last;

    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override { return Give(count, last ? 1 : 0); }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, ::Error** error) override;
    HRESULT STDMETHODCALLTYPE Clear() override {
        last.reset();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Refresh() override { return S_OK; }
    VLM_REFUSED(_NewEnum, IUnknown**)
};

class PropertyObject final : public Dual<::Property> {
public:
    explicit PropertyObject(std::string value) : value_(std::move(value)) {}

    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) override { return Give(name, std::string(kName)); }
    HRESULT STDMETHODCALLTYPE get_Type(DataTypeEnum* type) override { return Give(type, adBSTR); }
    VLM_REFUSED(put_Value, VARIANT)
    VLM_REFUSED_PROPERTY(Attributes, LONG)

    static constexpr const char* kName = "Initial Catalog";

private:
    std::string value_;
};

/// The one property that a connection has here: the name of its database.
class PropertyList final : public Dual<::Properties, _Collection> {
public:
    explicit PropertyList(std::string catalog) : catalog_(std::move(catalog)) {}

    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override { return Give(count, 1); }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, ::Property** property) override;
    HRESULT STDMETHODCALLTYPE Refresh() override { return S_OK; }
    VLM_REFUSED(_NewEnum, IUnknown**)

private:
    std::string catalog_;
};

class Connection final : public Dual<_Connection, Connection15, _ADO> {
public:
    /// What only these connections offer: themselves.
    static constexpr GUID kOwnId = com::Guid("6F2C6E0B-6B1D-4F0E-9C53-0D2B7C1A8E41");

    explicit Connection(data::ConnectionPtr native) : native_(std::move(native)) {}

    /// Throws a Failure when it is closed.
    const data::ConnectionPtr& Native() const;
    void Note(const Failure& failure) override { errors_->last = failure; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;

    HRESULT STDMETHODCALLTYPE get_Properties(::Properties** properties) override;
    HRESULT STDMETHODCALLTYPE get_Errors(::Errors** errors) override { return Give(errors, errors_.Share()); }
    HRESULT STDMETHODCALLTYPE get_State(LONG* state) override {
        return Give(state, native_ ? adStateOpen : adStateClosed);
    }
    HRESULT STDMETHODCALLTYPE get_Version(BSTR* version) override { return Give(version, std::string("2.8")); }
    HRESULT STDMETHODCALLTYPE get_DefaultDatabase(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_CommandTimeout(LONG* seconds) override { return Give(seconds, timeout_); }
    HRESULT STDMETHODCALLTYPE put_CommandTimeout(LONG seconds) override { return Give(&timeout_, seconds); }

    HRESULT STDMETHODCALLTYPE Execute(BSTR command, VARIANT* affected, LONG options, _Recordset** rows) override;
    HRESULT STDMETHODCALLTYPE BeginTrans(LONG* level) override;
    HRESULT STDMETHODCALLTYPE CommitTrans() override;
    HRESULT STDMETHODCALLTYPE RollbackTrans() override;
    HRESULT STDMETHODCALLTYPE Close() override;

    VLM_REFUSED_PROPERTY(ConnectionString, BSTR)
    VLM_REFUSED_PROPERTY(ConnectionTimeout, LONG)
    VLM_REFUSED(Open, BSTR, BSTR, BSTR, LONG)
    VLM_REFUSED(put_DefaultDatabase, BSTR)
    VLM_REFUSED_PROPERTY(IsolationLevel, IsolationLevelEnum)
    VLM_REFUSED_PROPERTY(Attributes, LONG)
    VLM_REFUSED_PROPERTY(CursorLocation, CursorLocationEnum)
    VLM_REFUSED_PROPERTY(Mode, ConnectModeEnum)
    VLM_REFUSED_PROPERTY(Provider, BSTR)
    VLM_REFUSED(OpenSchema, SchemaEnum, VARIANT, VARIANT, _Recordset**)
    VLM_REFUSED(Cancel)

private:
    data::ConnectionPtr native_;
    com::Ref<ErrorList> errors_{new ErrorList};
    LONG timeout_ = 30;
};

}  // namespace vlm::test::dataobjects
