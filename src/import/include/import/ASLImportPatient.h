#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "creation/ArchiveRecords.h"
#include "elements/ElementList.h"
#include "elements/Findings.h"
#include "frame/Library.h"
#include "healthcard/ModSistemaTS.h"
#include "readers/SourceFormat.h"

namespace vlm {

/// The public component that imports the patient lists of the health authority: reads a source into an element list,
/// matched with the archive, and makes archive patients and exemptions of its elements. The host calls the first part;
/// the rest is the library's own.
class ASLImportPatient {
public:
    using ReadingListener = std::function<void(std::int32_t percent)>;

    explicit ASLImportPatient(Library& library) : library_(library) {}

    // The host's members.
    const data::ConnectionPtr& Connection() const noexcept { return library_.Connection(); }
    void SetConnection(data::ConnectionPtr connection) { library_.SetConnection(std::move(connection)); }
    const HostObjectPtr& LockSrv() const noexcept { return security_.lockService; }
    void SetLockSrv(HostObjectPtr lockService) { security_.lockService = std::move(lockService); }
    const HostObjectPtr& Rights() const noexcept { return security_.rights; }
    void SetRights(HostObjectPtr rights) { security_.rights = std::move(rights); }
    void ShowDialog();
    /// A list in the Lazio format. Errors are thrown.
    ElementListPtr GetElementList(const std::string& fileName);
    /// Of the current element of a row set with the element list's columns; see PatientCreation, ExemptionCreation.
    std::int32_t CreatePatient(data::Recordset& element);
    std::int32_t CreateEsenzione(data::Recordset& element);
    /// As CreatePatient, for an element of a list that was read after RememberArchive: a patient whom somebody else has
    /// entered since is an Error.
    std::int32_t ConfirmPatient(data::Recordset& element);
    void RememberArchive();
    ElementListPtr GetElementListSistemaTS(std::int32_t specialist, const std::string& pin);
    ElementListPtr GetElementListEsentiRedditoSistemaTS(std::int32_t specialist, const std::string& pin);
    /// The event: how much of a source is read, in percent.
    ReadingListener ReadingFile;

    /// A patient list, by the position of the authority's entry in the dialog's list; an entry without a format of its
    /// own is read with the template. Errors of the authorities' own formats are thrown; see ReadWithTemplate.
    ElementListPtr ReadSourceForAsl(const std::string& fileName, int aslIndex, const std::string& templatePath);
    /// Any source that a template describes. Null after an error, which the user has been told, and for a template
    /// without a known type.
    ElementListPtr ReadWithTemplate(const std::string& fileName, const std::string& templatePath);
    /// What the last read could not take.
    const Findings& LastFindings() const noexcept { return findings_; }
    /// What the open dialog shows of the event.
    ReadingListener DialogReadingFile;

    Library& Lib() const noexcept { return library_; }
    const RecordSecurity& Security() const noexcept { return security_; }

private:
    ElementListPtr Read(const SourceFormat& format, const std::string& fileName);
    ElementListPtr ReadHealthCardList(HealthCardList list, std::int32_t specialist, const std::string& pin);
    /// Runs one read with its own caches, and keeps its findings.
    ElementListPtr InContext(const std::function<ElementListPtr(ReadContext&)>& read);
    void RaiseReadingFile(std::int32_t percent) const;

    Library& library_;
    RecordSecurity security_;
    Findings findings_;
    SinceReading sinceReading_;
};

}  // namespace vlm
