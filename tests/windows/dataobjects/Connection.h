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

private:
    Failure failure_;
};

/// What the provider said last.
class ErrorList final : public Dual<::Errors, _Collection> {
public:
    std::optional<Failure> last;

    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override { return Give(count, last ? 1 : 0); }
    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, ::Error** error) override {
        return Done([&] {
            PlaceOf(index, last ? 1 : 0);
            Give(error, com::Ref(new ErrorObject(*last)).Detach());
        });
    }
};

class PropertyObject final : public Dual<::Property> {
public:
    explicit PropertyObject(std::string value) : value_(std::move(value)) {}

    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override {
        value->vt = VT_BSTR;
        return Give(&value->bstrVal, value_);
    }

private:
    std::string value_;
};

/// The one property that a connection has here: the name of its database.
class PropertyList final : public Dual<::Properties, _Collection> {
public:
    explicit PropertyList(std::string catalog) : catalog_(std::move(catalog)) {}

    HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, ::Property** property) override {
        return Done([&] {
            if (index.vt != VT_BSTR || lstrcmpiW(index.bstrVal, L"Initial Catalog") != 0) {
                throw Numbered(adErrItemNotFound, "La connessione non ha una proprietà con quel nome.");
            }
            Give(property, com::Ref(new PropertyObject(catalog_)).Detach());
        });
    }

private:
    std::string catalog_;
};

class Connection final : public Dual<_Connection, Connection15, _ADO> {
public:
    explicit Connection(data::ConnectionPtr native) : native_(std::move(native)) {}

    const data::ConnectionPtr& Native() const { return native_; }
    void Note(const Failure& failure) override { errors_->last = failure; }

    HRESULT STDMETHODCALLTYPE get_Properties(::Properties** properties) override;
    HRESULT STDMETHODCALLTYPE get_Errors(::Errors** errors) override { return Give(errors, errors_.Share()); }
    HRESULT STDMETHODCALLTYPE get_State(LONG* state) override { return Give(state, adStateOpen); }
    HRESULT STDMETHODCALLTYPE Execute(BSTR command, VARIANT* affected, LONG options, _Recordset** rows) override;
    HRESULT STDMETHODCALLTYPE BeginTrans(LONG* level) override;
    HRESULT STDMETHODCALLTYPE CommitTrans() override;
    HRESULT STDMETHODCALLTYPE RollbackTrans() override;

private:
    data::ConnectionPtr native_;
    com::Ref<ErrorList> errors_{new ErrorList};
};

}  // namespace vlm::test::dataobjects
