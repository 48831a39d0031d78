#include "nexwire/Personnel/Collection.h"

#include "Application/Personnel/Pages.h"

namespace nexwire {

using namespace protocol::personnelcommon;

namespace {

/// One step of taking a credential.
template <class Credential>
bool Collect(Credential& result, bool& finished, std::string& batchGuid, const protocol::BatchPassThroughReq& request,
             const std::string& deviceGuid)
{
    return core::Guard([&] {
        protocol::BatchPassThroughRsp answer;
        if (!BatchExchange(Route::External, request, deviceGuid, answer)) {
            return false;
        }
        if (answer.batchReturnDataList.empty()) {
            finished = answer.isFinish;
            batchGuid = std::move(answer.guid);
            return true;
        }
        protocol::BatchReturnData& item = answer.batchReturnDataList.front();
        if (item.code != 0) {
            Keel::Error::ErrorCode error;
            error.number = item.code;
            error.text = std::move(item.statusBuffer);
            Keel::Error::SetLastError(error);
            return false;
        }
        Credential fresh;
        if (!protocol::TParseJSONStr(fresh, item.outBuffer)) {
            return false;
        }
        result = std::move(fresh);
        return true;
    });
}

bool CheckFaces(Route route, std::map<int, std::string>& results, bool& finished, std::string& batchGuid,
                const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return PageInto<FaceCheckResult>(
        [&results](FaceCheckResult&& face) { results.insert_or_assign(face.faceId, std::move(face.checkResult)); },
        route, request, deviceGuid, batchGuid, finished);
}

} // namespace

bool RemoteFaceCollectCom::request(FaceReturn& result, bool& finished, std::string& batchGuid,
                                   const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return Collect(result, finished, batchGuid, request, deviceGuid);
}

bool RemoteFingerCollectCom::request(FingerprintData& result, bool& finished, std::string& batchGuid,
                                     const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return Collect(result, finished, batchGuid, request, deviceGuid);
}

bool RemoteIrisCollectCom::request(IrisReturnDataData& result, bool& finished, std::string& batchGuid,
                                   const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return Collect(result, finished, batchGuid, request, deviceGuid);
}

bool FaceCheckCom::request(std::map<int, std::string>& results, bool& finished, std::string& batchGuid,
                           const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return CheckFaces(Route::External, results, finished, batchGuid, request, deviceGuid);
}

bool InternalFaceCheckCom::request(std::map<int, std::string>& results, bool& finished, std::string& batchGuid,
                                   const protocol::BatchPassThroughReq& request, const std::string& deviceGuid)
{
    return CheckFaces(Route::Internal, results, finished, batchGuid, request, deviceGuid);
}

} // namespace nexwire
