#pragma once

#include <memory>

#include "protocol/Personnel/Person.h"
#include "protocol/Personnel/Progress.h"

namespace nexwire {

/// Persons from and into files: fetch a template, fill it, upload it, have it parsed, and follow the import.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; outputs are untouched on false. `answer` receives the answer's body as
/// it stands, envelope included.
class NEXWIRE_API PersonsFileComm {
public:
    /// The file to fill in, with a column for each property.
    static bool requestTemplate(std::string& answer);

    /// Sends a file to the platform in slices. True when every slice was accepted and the last answer was a readable
    /// envelope.
    ///
    /// False also when the file cannot be opened, is empty or changes meanwhile, and when a slice is refused. The
    /// failed exchange's code is the last error then; slices that were accepted before are not withdrawn.
    ///
    /// @param progress    receives whole percent of the bytes accepted, 100 only after the last one; may be null. The
    ///                    host may read it from another thread meanwhile.
    /// @param uploadGuid  receives the identifier under which the file went up.
    /// @param file        path of a CSV file, UTF-8.
    static bool requestUpload(const std::shared_ptr<int>& progress, std::string& uploadGuid, const std::string& file);

    /// Starts the import of the file that was uploaded last; the answer's data names the task.
    ///
    /// @param unusedUploadGuid  plays no part in the request.
    static bool requestParseFile(std::string& answer, const std::string& unusedUploadGuid);

    /// How far an import is.
    static bool requestImportProgress(protocol::personnelcommon::ProgressData& result, const std::string& taskGuid);

    /// The persons of the register as a file.
    ///
    /// @param unusedFile  plays no part in the request: the platform writes what it writes for the template.
    static bool requestExport(std::string& answer, const protocol::personnelcommon::PersonnelDataFile& unusedFile);
};

} // namespace nexwire
