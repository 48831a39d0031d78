#include "tools/demo/PersonnelChapter.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include <keel/Error.h>
#include <keel/GuidUtil.h>
#include <rapidjson/document.h>

#include "nexwire/LastExchange.h"
#include "nexwire/Personnel/Collection.h"
#include "nexwire/Personnel/Credential.h"
#include "nexwire/Personnel/Organization.h"
#include "nexwire/Personnel/Person.h"
#include "nexwire/Personnel/PersonFile.h"
#include "nexwire/Personnel/Synchronous.h"
#include "nexwire/Visitor/Visitor.h"
#include "tools/demo/ChapterBase.h"

namespace nexwire::demo {
namespace {

using namespace protocol::personnelcommon;

constexpr int kCrew = 24;
constexpr const char* kDevice = "AC000000000000000000000000000001";
constexpr const char* kOffline = "AC000000000000000000000000000014";
constexpr int kPersonsOfDevice = 7001; ///< Commands of the device's batch channel.
constexpr int kCollectFace = 7101;

/// The identifier of the task in an answer that is handed out as it stands.
std::string TaskOf(const std::string& answer)
{
    rapidjson::Document document;
    document.Parse(answer.data(), answer.size());
    if (document.HasParseError() || !document.IsObject() || !document.HasMember("data") ||
        !document["data"].HasMember("taskGuid")) {
        return "";
    }
    return document["data"]["taskGuid"].GetString();
}

class Chapter : private ChapterBase {
public:
    explicit Chapter(Screen& screen) : ChapterBase(screen) {}

    bool Run() { return Tree() && Import() && Collect() && PageOut() && Synchronise() && Visit() && Refusal(); }

private:
    /// Asks for progress until the task has come to its end.
    template <class Progress, class Ask>
    bool Follow(const std::string& label, Progress& progress, const Ask& ask)
    {
        for (int i = 0; i < 300; ++i) {
            if (!ask(progress)) {
                return false;
            }
            screen_.Progress(label, progress.progress);
            if (progress.finished) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        return false;
    }

    bool Tree()
    {
        screen_.Step("Build a tree: a harbour with a crane crew and an office");
        OrganizationsAddList top;
        top.organizationList.emplace_back().name = "Harbour";
        OrganizationInfoListData made;
        bool done = CreateOrganizationComm::request(made, top, "") && made.organizationInfoList.size() == 1;
        OrganizationsAddList below;
        for (const char* const name : {"Crane crew", "Harbour office"}) {
            Organization& unit = below.organizationList.emplace_back();
            unit.name = name;
            unit.parOrgGuid = done ? made.organizationInfoList.front().guid : "";
        }
        done = done && CreateOrganizationComm::request(made, below, "") && made.organizationInfoList.size() == 2;
        for (const OrganizationInfo& unit : made.organizationInfoList) {
            done = Done(done && unit.resultCode == 0, unit.fullPath) && done;
        }
        crew_ = done ? made.organizationInfoList.front().guid : "";
        return done;
    }

    bool Import()
    {
        screen_.Step("Add " + std::to_string(kCrew) + " persons from a list; one brings a card that somebody has");
        const std::filesystem::path file =
            std::filesystem::temp_directory_path() / ("crew-" + Keel::GuidUtil::CreateGuid() + ".csv");
        {
            std::ofstream list(file, std::ios::binary);
            list << "personNo,name,orgGuid,cardNo\n";
            for (int i = 1; i <= kCrew; ++i) {
                list << 7000 + i << ",Docker " << i << ',' << crew_ << ',' << 4000700000 + (i == 17 ? 16 : i) << '\n';
            }
        }
        const auto percent = std::make_shared<int>(0);
        std::string upload;
        const bool sent = PersonsFileComm::requestUpload(percent, upload, file.u8string());
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        screen_.Progress("upload", *percent);
        std::string answer;
        ProgressData progress;
        const bool done = sent && PersonsFileComm::requestParseFile(answer, upload) &&
                          Follow("import", progress, [&](ProgressData& of) {
                              return PersonsFileComm::requestImportProgress(of, TaskOf(answer));
                          });
        for (const ProgressFailure& failure : progress.failedList) {
            screen_.Failure(failure.item + " " + failure.name + ": " + failure.resultMsg);
        }
        QueryPerson first;
        first.personNo = "7001";
        first.sectionList = {"basic"};
        TotalData found;
        const bool there =
            done && FindPersonByOtherComm::request(found, first, "") && found.personnelInfoList.size() == 1;
        person_ = there ? found.personnelInfoList.front().basic.guid : "";
        return Done(there && progress.successNum == kCrew - 1, std::to_string(progress.successNum) + " of " +
                                                                   std::to_string(progress.totalNum) +
                                                                   " persons are in the register");
    }

    bool Collect()
    {
        screen_.Step("Collect a face at a device: ask until the person has come");
        protocol::BatchPassThroughReq request;
        request.command = kCollectFace;
        FaceReturn face;
        bool finished = false;
        bool done = true;
        for (int i = 0; done && !finished && face.faceData.empty() && i < 10; ++i) {
            done = RemoteFaceCollectCom::request(face, finished, request.guid, request, kDevice);
            screen_.Result(face.faceData.empty() ? "nobody there yet"
                                                 : "a picture of " + std::to_string(face.faceDataLen) + " bytes");
        }
        FaceDataList faces;
        FaceData& data = faces.faceDataList.emplace_back();
        data.personnelGuid = person_;
        data.face.faceData = face.faceData;
        data.face.faceDataLen = face.faceDataLen;
        FaceDataResultListData results;
        done = done && !face.faceData.empty() && AddFaceDataComm::request(results, faces) &&
               results.faceDataResultList.size() == 1 && results.faceDataResultList.front().resultCode == 0;
        return Done(done, "the face is Docker 1's now");
    }

    bool PageOut()
    {
        screen_.Step("Page the persons out of a device, two at a time");
        protocol::BatchPassThroughReq request;
        request.command = kPersonsOfDevice;
        request.maxResultNum = 2;
        protocol::UserInfoSearch persons;
        bool finished = false;
        std::string error;
        int pages = 0;
        while (!finished && ++pages < 20) {
            const std::size_t before = persons.userInfoList.size();
            if (!SynchronousPersonComm::request(persons, request, kDevice, request.guid, finished, error)) {
                return Done(false, "page " + std::to_string(pages) + ": " + error);
            }
            std::string names;
            for (std::size_t i = before; i < persons.userInfoList.size(); ++i) {
                names += (names.empty() ? "" : ", ") + persons.userInfoList[i].name;
            }
            screen_.Result("page " + std::to_string(pages) + ": " + names);
        }
        return Done(finished && !persons.userInfoList.empty(),
                    std::to_string(persons.userInfoList.size()) + " persons on the device");
    }

    bool Synchronise()
    {
        screen_.Step("Have the platform take them into the register");
        SynchronousQuery query;
        query.orgGuid = crew_;
        std::string answer;
        SynchronouProgressData progress;
        std::string raw;
        const bool done = SynchronousFromDevice::request(answer, query, kDevice) &&
                          Follow("synchronisation", progress, [&](SynchronouProgressData& of) {
                              return SynchronousProgressComm::request(of, TaskOf(answer), raw);
                          });
        return Done(done, std::to_string(progress.addedNum) + " of " + std::to_string(progress.totalNum) +
                              " were new to the register");
    }

    bool Visit()
    {
        screen_.Step("Invite a visitor to two doors, one of them out of reach");
        protocol::VisitAaccessGroupAddParam group;
        group.accessGroupName = "Quay " + Keel::GuidUtil::CreateGuid().substr(0, 4);
        for (const char* const device : {kDevice, kOffline}) {
            group.accessPointList.emplace_back().deviceGuid = device;
        }
        protocol::VisitAccessGroupAddedResult added;
        bool done = AccessGroupPointComm::createAccessGroup(added, group);
        protocol::AddAppointment invitation;
        protocol::AppointmentInfo& appointment = invitation.appointmentList.emplace_back();
        appointment.visitor.visitorName = "Vera Lind";
        appointment.visitor.company = "Example Lines";
        appointment.visitBeginTime = "2026-03-01T08:00:00+00:00";
        appointment.visitEndTime = "2099-03-01T18:00:00+00:00";
        appointment.accessGroupGuidList = {added.accessGroupGuid};
        protocol::AddAppointmentResultListData results;
        done = done && AppointmentComm::addAppointment(results, invitation) &&
               results.addAppointmentResultList.size() == 1 && results.addAppointmentResultList.front().resultCode == 0;
        if (!Done(done, done ? "code for the entrance: " + results.addAppointmentResultList.front().visitCode
                             : "the invitation")) {
            return false;
        }
        const std::string guid = results.addAppointmentResultList.front().appointmentGuid;
        protocol::QueryVisitorRecordResultListData failed;
        for (int i = 0; i < 100 && failed.totalNum == 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            done = RecordComm::getDownloadFailRecord(failed);
        }
        protocol::VisitorErrorRecordResponseData why;
        done = done && RecordComm::getVisitorErrorRecord(why, guid);
        for (const protocol::VisitorErrorRecord& error : why.visitorErrorRecordResponse.errorRecordList) {
            screen_.Failure(error.deviceName + " did not take the permission: " + error.errorMsg);
        }
        screen_.Step("Admit the visitor at the other one, and see off");
        protocol::ModifyAppointment change;
        change.visitor = appointment.visitor;
        change.visitBeginTime = appointment.visitBeginTime;
        change.visitEndTime = appointment.visitEndTime;
        change.accessGroupGuidList = appointment.accessGroupGuidList;
        for (const int state : {1, 2}) {
            change.appointmentState = state;
            protocol::QueryVisitorRecordCondition condition;
            condition.visitorName = "Vera";
            condition.visitState = state;
            protocol::QueryVisitorRecordResultListData records;
            done = done && AppointmentComm::updateAppointment(change, guid) &&
                   RecordComm::getRecord(records, condition) && records.totalNum == 1;
            done = Done(done, state == 1 ? "Vera Lind is inside" : "Vera Lind has left") && done;
        }
        return done;
    }

    bool Refusal()
    {
        screen_.Step("Remove the crane crew while people are in it");
        OrganizationsDelList removal;
        removal.guidList = {crew_};
        OrganizationInfoListData result;
        if (!DeleteOrganizationComm::request(result, removal, "") || result.organizationInfoList.size() != 1 ||
            result.organizationInfoList.front().resultCode == 0) {
            return Done(false, "the removal should have been refused; it");
        }
        screen_.Failure(result.organizationInfoList.front().resultMsg);
        return true;
    }

    std::string crew_;
    std::string person_;
};

} // namespace

bool RunPersonnelChapter(Screen& screen)
{
    return Chapter(screen).Run();
}

} // namespace nexwire::demo
