#include "Application/PassThrough/PassThrough.h"
#include "nexwire/Statistics/Statistics.h"

namespace nexwire {

bool CDataStatisticsComm::peopleCountingRequest(protocol::PeopleCountingDataData& result,
                                                const protocol::PeopleCountingQueryData& query)
{
    return Exchange(Query("/7730/v1/video/peopleCountingDatas", query), result);
}

bool CDataStatisticsComm::DSAlarmLogRequest(protocol::DSAlarmLogResultDataData& result,
                                            const protocol::DSAlarmLogQueryData& query)
{
    return Exchange(Query("/7730/v1/dataVisualization/AlarmLog", query), result);
}

bool CDataStatisticsComm::HeatMapRequest(protocol::DsHeatMapResultDataData& result,
                                         const protocol::HeatMapQueryData& query)
{
    return Exchange(Query("/7730/v1/dataVisualization/HeatMap", query), result);
}

bool CDataStatisticsComm::qlNetSDKrequest(const std::string& deviceGuid, protocol::NetsdkPassThroughRspData& result,
                                          const protocol::NetsdkPassThroughReq& request)
{
    return NetsdkExchange(deviceGuid, request, result);
}

bool CDataStatisticsComm::kestrelRequest(const std::string& deviceGuid, protocol::KestrelPassThroughRspData& result,
                                         const protocol::KestrelPassThroughReq& request)
{
    return KestrelExchange(Route::External, deviceGuid, request, result);
}

#define PAGE(function, Element)                                                                                        \
    bool CDataStatisticsComm::function(bool& finished, std::string& batchGuid, const std::string& deviceGuid,          \
                                       std::vector<protocol::Element>& list,                                           \
                                       const protocol::BatchPassThroughReq& request)                                   \
    {                                                                                                                  \
        return AppendPage(Route::External, request, deviceGuid, list, batchGuid, finished);                            \
    }

PAGE(dataRetrievalSDKRequest, SmartSearchRetData)
PAGE(PCSDKRequest, PdcResultData)
PAGE(heatMapSDKRequest, HeatMapResultData)
PAGE(roadTrafficSDKRequest, RoadTrafficresultData)
PAGE(uploadToFaceLibSDKRequest, UploadResult)
PAGE(vehicleExportSDKRequest, VehicleInfo)

#undef PAGE

} // namespace nexwire
