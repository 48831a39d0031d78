#pragma once

#include "protocol/Common.h"

// How persons prove who they are on a device, where that differs from the device's own setting. Modes, operations
// and download states are server vocabulary, carried as they are.

namespace protocol {

/// The mode a person is to have on a device.
struct NEXWIRE_API PersonnelVerifyModeSet : IInboundData {
    std::string personnelGuid;
    std::string personnelNo; ///< Number the person is known by, for example on a badge.
    std::string personnelName;
    std::int32_t userVerifyMode = 0;
    NEXWIRE_JSON
};

/// Modes of several persons on one device.
struct NEXWIRE_API SetVerifyModeReq : IInboundData {
    std::int32_t operateType = 0; ///< What is done with the modes.
    std::vector<PersonnelVerifyModeSet> personnelVerifyModeSetList;
    NEXWIRE_JSON
};

struct NEXWIRE_API SetVerifyModeRsp : IReturnData {
    std::string deviceGuid;
    std::vector<OperationResult> operationResultList; ///< One per person, under the person's GUID.
    NEXWIRE_JSON
};

struct NEXWIRE_API SetVerifyModeRspData : IReturnData {
    SetVerifyModeRsp setVerifyModeRsp;
    NEXWIRE_JSON
};

/// Which persons are wanted.
struct NEXWIRE_API PersonnelVerifyModeQueryCondition : IInboundData {
    std::vector<std::int32_t> verifyModeList; ///< Empty: any mode.
    std::int32_t downStatus = -1;             ///< Download state; -1: any.
    std::string personnelName;                ///< Part of the name; empty: any.
    std::string personnelNo;                  ///< Empty: any.
    NEXWIRE_JSON
};

/// Question for the modes on a device.
struct NEXWIRE_API PersonnelVerifyModeCondition : IInboundData {
    bool isQuery = false; ///< True: narrow by the filter below.
    PersonnelVerifyModeQueryCondition personnelVerifyModeFilterCondition;
    NEXWIRE_JSON
};

/// A person's mode on a device.
struct NEXWIRE_API PersonnelVerifyMode : IReturnData {
    std::string personnelGuid;
    std::string personnelNo;
    std::string personnelName;
    std::int32_t userVerifyMode = 0;
    std::int32_t downStatus = 0; ///< Whether the device has it yet.
    std::int32_t errorCode = 0;  ///< 0, or why the download failed.
    std::string errorMsg;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelVerifyModeRsp : IReturnData {
    std::string deviceGuid;
    std::vector<PersonnelVerifyMode> verifyModeList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelVerifyModeRspData : IReturnData {
    PersonnelVerifyModeRsp personnelVerifyModeRsp;
    NEXWIRE_JSON
};

/// How many persons have a mode.
struct NEXWIRE_API PersonnelVerifyModeCount : IReturnData {
    std::int32_t userVerifyMode = 0;
    std::int32_t personnelNum = 0;
    NEXWIRE_JSON
};

/// Persons per mode on a device.
struct NEXWIRE_API PersonnelVerifyValues : IReturnData {
    std::string deviceGuid;
    std::int32_t totalNum = 0; ///< Persons with a mode of their own.
    std::vector<PersonnelVerifyModeCount> verifyModeCountList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelVerifyValuesData : IReturnData {
    PersonnelVerifyValues personnelVerifyValues;
    NEXWIRE_JSON
};

} // namespace protocol
