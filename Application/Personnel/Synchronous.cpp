#include "nexwire/Personnel/Synchronous.h"

#include "Application/Personnel/Pages.h"
#include "Application/Personnel/Roots.h"

namespace nexwire {

using namespace protocol::personnelcommon;

namespace {

Route RouteOf(bool internalRoute)
{
    return internalRoute ? Route::Internal : Route::External;
}

} // namespace

bool SynchronousPersonComm::request(protocol::UserInfoSearch& persons, const protocol::BatchPassThroughReq& request,
                                    const std::string& deviceGuid, std::string& batchGuid, bool& finished,
                                    std::string& errorText)
{
    return PageInto(persons.userInfoList, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousCardComm::request(std::vector<protocol::CardConfigParam>& cards,
                                  const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                  std::string& batchGuid, bool& finished, std::string& errorText, bool internalRoute)
{
    return PageInto(cards, RouteOf(internalRoute), request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousCardComm::request(std::vector<protocol::CardInfoCfg>& cards,
                                  const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                  std::string& batchGuid, bool& finished, std::string& errorText)
{
    return PageInto(cards, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousFingerComm::request(std::vector<protocol::FingerPrintConfigForDag>& fingerprints,
                                    const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                    std::string& batchGuid, bool& finished, std::string& errorText)
{
    return PageInto(fingerprints, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousIrisComm::request(std::vector<protocol::Irisinfo>& irises, const protocol::BatchPassThroughReq& request,
                                  const std::string& deviceGuid, std::string& batchGuid, bool& finished,
                                  std::string& errorText)
{
    return PageInto(irises, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousFaceComm::request(std::vector<protocol::FaceConfigForPer>& faces,
                                  const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                  std::string& batchGuid, bool& finished, std::string& errorText)
{
    return PageInto(faces, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousFaceComm::request(std::vector<protocol::FaceConfigForCard>& faces,
                                  const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                  std::string& batchGuid, bool& finished, std::string& errorText)
{
    return PageInto(faces, Route::Internal, request, deviceGuid, batchGuid, finished, &errorText);
}

bool SynchronousCardPWDComm::request(std::vector<protocol::CardPasswdInfo>& passwords,
                                     const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                     std::string& batchGuid, bool& finished, bool internalRoute)
{
    return PageInto(passwords, RouteOf(internalRoute), request, deviceGuid, batchGuid, finished);
}

bool SynchronousFromDevice::request(std::string& answer, SynchronousQuery& query, const std::string& deviceGuid)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "synchronous/", deviceGuid), query), answer);
}

bool SynchronousProgressComm::request(SynchronouProgressData& result, const std::string& taskGuid, std::string& answer)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "synchronous/", taskGuid, "/progress")), result, answer);
}

bool SyncFromEnrollmentStation::request(std::string& answer, SynchronousQuery& query)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "synchronous/enrollmentStation"), query), answer);
}

bool SyncProgressCommFromEnrollmentStation::request(SynchronouProgressData& result, const std::string& taskGuid,
                                                    std::string& answer)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "synchronous/enrollmentStation/", taskGuid, "/progress")), result,
                           answer);
}

bool SyncDataFromEnrollmentStation::request(const std::string& taskGuid, const std::string& orgGuid,
                                            std::string& answer)
{
    return ExchangeForText(Write(Path(kPersonnelRoot, "synchronous/enrollmentStation/data/", taskGuid),
                                 Only(&EnrollmentStationData::orgGuid, orgGuid)),
                           answer);
}

} // namespace nexwire
