#pragma once

#include "protocol/PassThrough/PassThrough.h"
#include "protocol/Statistics/Statistics.h"

namespace nexwire {

/// Figures for charts: what the platform counted, and what devices counted.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; a result is untouched on false.
class NEXWIRE_API CDataStatisticsComm {
public:
    static bool peopleCountingRequest(protocol::PeopleCountingDataData& result,
                                      const protocol::PeopleCountingQueryData& query);
    static bool DSAlarmLogRequest(protocol::DSAlarmLogResultDataData& result,
                                  const protocol::DSAlarmLogQueryData& query);
    static bool HeatMapRequest(protocol::DsHeatMapResultDataData& result, const protocol::HeatMapQueryData& query);

    /// Has a device carry out a command of its programming interface.
    static bool qlNetSDKrequest(const std::string& deviceGuid, protocol::NetsdkPassThroughRspData& result,
                                const protocol::NetsdkPassThroughReq& request);
    /// Sends a request to a device's HTTP interface.
    static bool kestrelRequest(const std::string& deviceGuid, protocol::KestrelPassThroughRspData& result,
                               const protocol::KestrelPassThroughReq& request);

    // ---- One page of what a device counted. Call again with `batchGuid` in the request until `finished`. ----

    /// Each item of the page is appended to the list; one that cannot be read ends the call with false, and what was
    /// appended before it stays. `finished` and `batchGuid` are written on success only.
    static bool dataRetrievalSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                                        std::vector<protocol::SmartSearchRetData>& list,
                                        const protocol::BatchPassThroughReq& request);
    /// The same for counted people.
    static bool PCSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                             std::vector<protocol::PdcResultData>& list, const protocol::BatchPassThroughReq& request);
    /// The same for heat maps.
    static bool heatMapSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                                  std::vector<protocol::HeatMapResultData>& list,
                                  const protocol::BatchPassThroughReq& request);
    /// The same for lanes.
    static bool roadTrafficSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                                      std::vector<protocol::RoadTrafficresultData>& list,
                                      const protocol::BatchPassThroughReq& request);
    /// The same for faces on their way into a device's library.
    static bool uploadToFaceLibSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                                          std::vector<protocol::UploadResult>& list,
                                          const protocol::BatchPassThroughReq& request);
    /// The same for vehicles that passed.
    static bool vehicleExportSDKRequest(bool& finished, std::string& batchGuid, const std::string& deviceGuid,
                                        std::vector<protocol::VehicleInfo>& list,
                                        const protocol::BatchPassThroughReq& request);
};

} // namespace nexwire
