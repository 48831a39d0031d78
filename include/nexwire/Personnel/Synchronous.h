#pragma once

#include "protocol/PassThrough/PassThrough.h"
#include "protocol/Personnel/DevicePerson.h"
#include "protocol/Personnel/Progress.h"

namespace nexwire {

// Persons and credentials that devices and enrolment stations already hold, read back: page by page by the caller, or
// by the platform while the caller follows its progress.
//
// All functions of this file block until the answer is there and may be called from any thread.
//
// Paging: the caller brings the command and its condition. Each call reads one page and appends its elements to the
// list, which is never emptied; put `batchGuid` into the next request's `guid` until `finished`. True when the answer
// was a readable envelope, whatever its code, and all of its elements could be read. Elements that the device reports a
// code for are passed over. On false `batchGuid` and `finished` are untouched, elements before the unreadable one stay,
// and `errorText` says why: the last error's text when the executor failed. The internal route is the one for
// components of the platform; where a flag chooses, false takes the one for clients.

class NEXWIRE_API SynchronousPersonComm {
public:
    /// Persons, appended to `persons.userInfoList`. Internal route.
    static bool request(protocol::UserInfoSearch& persons, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText);
};

class NEXWIRE_API SynchronousCardComm {
public:
    /// Cards of a device that knows cards only.
    static bool request(std::vector<protocol::CardConfigParam>& cards, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText,
                        bool internalRoute);
    /// Cards of a device that knows persons. Internal route.
    static bool request(std::vector<protocol::CardInfoCfg>& cards, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText);
};

class NEXWIRE_API SynchronousFingerComm {
public:
    /// Fingerprints. Internal route.
    static bool request(std::vector<protocol::FingerPrintConfigForDag>& fingerprints,
                        const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                        std::string& batchGuid, bool& finished, std::string& errorText);
};

class NEXWIRE_API SynchronousIrisComm {
public:
    /// Irises. Internal route.
    static bool request(std::vector<protocol::Irisinfo>& irises, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText);
};

class NEXWIRE_API SynchronousFaceComm {
public:
    /// Faces of a device that knows persons. Internal route.
    static bool request(std::vector<protocol::FaceConfigForPer>& faces, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText);
    /// Faces of a device that knows cards only. Internal route.
    static bool request(std::vector<protocol::FaceConfigForCard>& faces, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, std::string& errorText);
};

class NEXWIRE_API SynchronousCardPWDComm {
public:
    /// Passwords of cards.
    static bool request(std::vector<protocol::CardPasswdInfo>& passwords, const protocol::BatchPassThroughReq& request,
                        const std::string& deviceGuid, std::string& batchGuid, bool& finished, bool internalRoute);
};

// By the platform. True when the answer was a readable envelope, whatever its code; outputs are untouched on false.
// `answer` receives the answer's body as it stands, envelope included: the data of a start names the task.

class NEXWIRE_API SynchronousFromDevice {
public:
    /// Starts reading a device.
    static bool request(std::string& answer, protocol::personnelcommon::SynchronousQuery& query,
                        const std::string& deviceGuid);
};

class NEXWIRE_API SynchronousProgressComm {
public:
    /// How far a task with a device is.
    static bool request(protocol::personnelcommon::SynchronouProgressData& result, const std::string& taskGuid,
                        std::string& answer);
};

class NEXWIRE_API SyncFromEnrollmentStation {
public:
    /// Starts reading enrolment stations.
    static bool request(std::string& answer, protocol::personnelcommon::SynchronousQuery& query);
};

class NEXWIRE_API SyncProgressCommFromEnrollmentStation {
public:
    /// How far a task with enrolment stations is.
    static bool request(protocol::personnelcommon::SynchronouProgressData& result, const std::string& taskGuid,
                        std::string& answer);
};

class NEXWIRE_API SyncDataFromEnrollmentStation {
public:
    /// Takes what a task has read from enrolment stations into the register.
    ///
    /// @param orgGuid  organisation that persons without one go into; empty: the root.
    static bool request(const std::string& taskGuid, const std::string& orgGuid, std::string& answer);
};

} // namespace nexwire
