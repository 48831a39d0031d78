#pragma once

#include <memory>

#include "protocol/DeviceManagement/EventImport.h"
#include "protocol/Personnel/Progress.h"

namespace nexwire {

/// Events of devices that were saved in a file: the file goes up, the platform imports it, and its progress is asked
/// for until it is finished. The library keeps nothing between the calls.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the (last)
/// answer was a readable envelope, whatever its code; results and answers are untouched on false.
class NEXWIRE_API FileImportEventComm {
public:
    /// Sends a CSV file, slice by slice. False also when it cannot be opened, is empty or shrinks meanwhile, and at the
    /// first slice that fails; slices that were sent are not withdrawn. The code that a failed exchange left in its
    /// answer becomes the last error.
    ///
    /// @param progress    counts whole percent of the file up to 100, and keeps its value on failure; may be empty.
    ///                    Other threads may read it meanwhile.
    /// @param uploadGuid  receives the upload's new identifier.
    /// @param file        path, UTF-8.
    /// @param answer      the last answer as it is.
    static bool requestUpload(std::shared_ptr<int> progress, std::string& uploadGuid, const std::string& file,
                              std::string& answer);
    /// Starts the import of the file that was sent last. The three texts play no part in the request.
    ///
    /// @param taskGuid  names the import for the two functions below.
    /// @param answer    the answer as it is.
    static bool requestImportFile(std::string& taskGuid, const std::string& unusedUploadGuid,
                                  const std::string& unusedDeviceGuid, const std::string& unusedFileName,
                                  std::string& answer);
    /// @param answer  the answer as it is.
    static bool requestImportProgress(protocol::personnelcommon::SynchronouProgressData& result,
                                      const std::string& taskGuid, std::string& answer);
    /// @param query   sent as it is; on success what the answer says of it has replaced its members.
    /// @param answer  the answer as it is.
    static bool requestStopImport(protocol::personnelcommon::SynchronousQuery& query, const std::string& taskGuid,
                                  std::string& answer);
};

} // namespace nexwire
