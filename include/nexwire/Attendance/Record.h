#pragma once

#include <memory>

#include "protocol/Attendance/Record.h"
#include "protocol/PassThrough/PassThrough.h"

namespace nexwire {

// Clock records and where they come from.
//
// All functions block until the answer is there and may be called from any thread. They return true when the answer
// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.

/// Has the platform take a device's events into attendance.
class NEXWIRE_API CAttendanceSyncEvent {
public:
    static bool request(const protocol::DeviceSyncEventReq& param);
};

/// Clock records from a file.
class NEXWIRE_API FileImportEventCommAtt {
public:
    /// Sends a CSV file in slices, then a closing request.
    ///
    /// False when the file cannot be opened, is empty or cannot be read to its end, and when a request fails or its
    /// answer is refused by the executor; what was sent is not withdrawn.
    ///
    /// @param progress    receives whole percent of the bytes accepted, 100 only at the end; any thread may read it.
    ///                    May be empty.
    /// @param uploadGuid  receives the upload's identifier for `requestImportFileByAttendance`, before the first slice.
    /// @param file        UTF-8.
    static bool requestUploadByAttendance(const std::shared_ptr<int>& progress, std::string& uploadGuid,
                                          const std::string& file);
    /// Takes the records of an uploaded file; the result names the lines that were not taken.
    static bool requestImportFileByAttendance(protocol::FileImportReturnData& result,
                                              const protocol::ImportAttendanceFiles& param);
};

/// Events that a device holds, for attendance.
class NEXWIRE_API SynDeviceInfoComm {
public:
    /// One page. Events of all items are appended to `result.infoList`, everything else is taken from the last item;
    /// an item that cannot be read ends the call with false, and what was appended before it stays.
    static bool request(protocol::AcsEventSearch& result, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid);
};

/// Has the platform go through its statistics without keeping what comes out.
class NEXWIRE_API TestComm {
public:
    static bool setInfo(const protocol::StatisticsTestInfo& param);
};

} // namespace nexwire
