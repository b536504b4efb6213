#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "import/ASLImportPatient.h"
#include "readers/AslFormats.h"
#include "support/EmptyArchive.h"
#include "support/FakeServices.h"
#include "support/TempFolder.h"
#include "values/Error.h"

namespace vlm::fuzz {

/// The import component in a folder of its own: a fuzz target writes its bytes there and has them read.
class ImportReading {
public:
    ImportReading() { component.SetConnection(std::make_shared<test::EmptyArchive>()); }

    std::string Write(const char* name, const std::string& bytes) const {
        test::WriteBytes(folder / name, bytes);
        return folder / name;
    }
    /// Reads the list with a template; what it gives must hold together.
    void ReadWith(const std::string& list, const std::string& format) {
        services.toolkit.messages.clear();
        Walk(component.ReadWithTemplate(list, format));
    }
    /// Reads the list as every authority's own format of a kind has it.
    void ReadAs(const std::string& list, SourceKind kind) {
        int entry = -1;
        for (const asl::Authority& authority : asl::Authorities()) {
            ++entry;
            if (authority.format == nullptr || authority.format->kind != kind) continue;
            try {
                Walk(component.ReadSourceForAsl(list, entry, ""));
            } catch (const Error&) {  // a source that cannot be read says so
            }
        }
    }

private:
    static void Walk(const ElementListPtr& elements) {
        if (!elements) return;
        for (; !elements->AtEnd(); elements->MoveNext()) {
            for (int column = 0; column < elements->FieldCount(); ++column) elements->TextOf(column);
        }
    }

    test::TempFolder folder;
    test::FakeServices services;
    ASLImportPatient component{services.library};
};

}  // namespace vlm::fuzz
