#pragma once

#include <map>

#include "protocol/PassThrough/PassThrough.h"
#include "protocol/Personnel/Credential.h"

namespace nexwire {

// Credentials taken and judged by a device at the person's presence, through its batch commands. The caller brings the
// command and its condition.
//
// Taking one is a conversation: send the request; while the person has not come yet, the answer has no data and
// `batchGuid` receives what goes into the next request's `guid`, `finished` whether the device has given up. Once the
// answer has data, `result` receives it, and `finished` and `batchGuid` stay as they are.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code, and what it carries could be read; outputs are untouched on
// false unless a function says otherwise. A credential that the device could not take comes with a code other than 0:
// false, and the last error has this number and the device's status text.

class NEXWIRE_API RemoteFaceCollectCom {
public:
    /// A face: picture and, where the device makes one, model.
    static bool request(protocol::personnelcommon::FaceReturn& result, bool& finished, std::string& batchGuid,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid);
};

class NEXWIRE_API RemoteFingerCollectCom {
public:
    /// A fingerprint.
    static bool request(protocol::personnelcommon::FingerprintData& result, bool& finished, std::string& batchGuid,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid);
};

class NEXWIRE_API RemoteIrisCollectCom {
public:
    /// Both eyes.
    static bool request(protocol::personnelcommon::IrisReturnDataData& result, bool& finished, std::string& batchGuid,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid);
};

class NEXWIRE_API FaceCheckCom {
public:
    /// What a device thinks of the face pictures that the request carries: number of the picture and device
    /// vocabulary, see `FaceCheckResult`. Entries are added to `results`, a later judgement of a picture replaces an
    /// earlier one; pictures that the device reports a code for are passed over. An item that cannot be read ends the
    /// call with false; what was added before it stays. `finished` and `batchGuid` are those of the answer.
    static bool request(std::map<int, std::string>& results, bool& finished, std::string& batchGuid,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid);
};

class NEXWIRE_API InternalFaceCheckCom {
public:
    /// As `FaceCheckCom`, for components of the platform.
    static bool request(std::map<int, std::string>& results, bool& finished, std::string& batchGuid,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid);
};

} // namespace nexwire
