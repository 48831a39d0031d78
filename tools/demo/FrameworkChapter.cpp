#include "tools/demo/FrameworkChapter.h"

#include <chrono>
#include <string>
#include <thread>

#include <keel/Error.h>

#include "nexwire/Framework/Encryption.h"
#include "nexwire/Framework/User.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Log/Log.h"
#include "nexwire/Topology/Topology.h"
#include "nexwire/Video/View.h"
#include "tools/demo/ChapterBase.h"

namespace nexwire::demo {
namespace {

constexpr const char* kUser = "security";
constexpr const char* kPassword = "Nexwire-2026";

class Chapter : private ChapterBase {
public:
    explicit Chapter(Screen& screen) : ChapterBase(screen) {}

    bool Run() { return SignIn() && ListUsers() && Refresh() && SaveView() && SearchLog(); }

private:
    bool SignIn()
    {
        screen_.Step("Have the password enciphered, and sign in as \"" + std::string(kUser) +
                     "\"; first with a wrong one");
        for (const std::string& password : {std::string("let me in"), std::string(kPassword)}) {
            protocol::EncryptionInfo plain;
            plain.plaintextList.push_back(password);
            protocol::CiphertextListData enciphered;
            protocol::CheckAnswer check;
            protocol::CheckAnswerResultData result;
            bool done = CEncryptionComm::request(enciphered, plain, "") && !enciphered.ciphertextList.empty();
            if (done) {
                check.userName = kUser;
                check.password = enciphered.ciphertextList.front().ciphertext;
                done = CUserCheckPassword::request(check, result);
            }
            const bool passed = result.checkAnswerResult.isPassed;
            if (!Done(done && passed == (password == kPassword),
                      passed ? "signed in"
                             : "not signed in, " + std::to_string(result.checkAnswerResult.remainTimes) +
                                   " tries are left")) {
                return false;
            }
        }
        protocol::CurrentUserInfoData current;
        const bool asked = CGetCurrentUserInfoComm::request(current);
        return Done(asked && current.currentUserInfo.userName == kUser,
                    "the platform says: " + current.currentUserInfo.userName);
    }

    bool ListUsers()
    {
        screen_.Step("List the users; their telephones are deciphered one by one");
        protocol::UserInfoListData users;
        const bool asked = CGetAllUserBasicInfoComm::request(users);
        if (!Done(asked, std::to_string(users.userInfoList.size()) + " users")) {
            return false;
        }
        for (const protocol::UserInfo& user : users.userInfoList) {
            screen_.Result(user.userName + " (" + user.realName + "), " + user.telephone +
                           (user.isOnline ? ", online" : ""));
        }
        return true;
    }

    bool Refresh()
    {
        screen_.Step("Look through the network anew and follow how far it is");
        protocol::ResetPercent begin;
        begin.isReset = true;
        protocol::ProgressData progress;
        bool done = CTopologyConfigComm::getTopologyRefreshProgress(progress, begin);
        for (int i = 0; done && i < 200 && progress.progress.percent < 100; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            done = CTopologyConfigComm::getTopologyRefreshProgress(progress, protocol::ResetPercent());
            screen_.Progress("network", progress.progress.percent);
        }
        if (!Done(done && progress.progress.percent == 100, std::to_string(progress.progress.nodeNum) + " nodes, " +
                                                                std::to_string(progress.progress.lineNum) + " lines")) {
            return false;
        }
        protocol::LineListData lines;
        done = CTopologyConfigComm::getAllLineNodes(lines);
        constexpr int kDown = 2;
        for (const protocol::Line& line : lines.lineList) {
            if (done && line.lineStatus == kDown) {
                protocol::DeviceNode lost;
                protocol::SwitchAlarmListData alarms;
                done = CTopologyConfigComm::getOneDeviceNode(lost, line.endNodeGuid) &&
                       CTopologyInterComm::getPortAlarmState(alarms, line.beginNodeGuid);
                screen_.Result(
                    "port " + std::to_string(line.beginPortNo) + " of the switch before \"" + lost.nodeName +
                    "\" alarms: " + (alarms.switchAlarmList.empty() ? "" : alarms.switchAlarmList.front().description));
            }
        }
        return Done(done, std::to_string(lines.lineList.size()) + " lines read");
    }

    bool SaveView()
    {
        screen_.Step("Save a view of four windows and read it back");
        protocol::ViewParam view;
        view.viewName = "Gates";
        view.rows = 2;
        view.columns = 2;
        for (int i = 0; i < 4; ++i) {
            protocol::ViewWindow& window = view.viewWindowList.emplace_back();
            window.windowNo = i + 1;
            window.row = i / 2;
            window.column = i % 2;
        }
        protocol::ViewResultData saved;
        protocol::ViewResoponse kept;
        const bool done =
            CMainViewRequest::addView(saved, view) && CMainViewRequest::getViewByGUID(kept, saved.viewResult.viewGuid);
        return Done(done && kept.viewWindowList.size() == view.viewWindowList.size(),
                    "\"" + kept.viewName + "\" by " + kept.createUser + ", " + kept.modifyTime);
    }

    bool SearchLog()
    {
        screen_.Step("Read in the log what \"" + std::string(kUser) + "\" did");
        protocol::LogCodition condition;
        condition.userNameList.emplace_back(kUser);
        condition.ascending = true;
        protocol::LogFilterConditionSupportedData found;
        if (!CSearchFilterLogsComm::request(found, condition)) {
            return Done(false, "the search");
        }
        const protocol::LogFilterConditionSupported& page = found.logFilterConditionSupported;
        for (const protocol::LogInfo& entry : page.logInfoList) {
            screen_.Result(entry.logTime.substr(11, 8) + " " + entry.operation +
                           (entry.logResult == 1 ? ": " : " failed: ") + entry.content);
        }
        return Done(page.total >= 3, std::to_string(page.total) + " entries");
    }
};

} // namespace

bool RunFrameworkChapter(Screen& screen)
{
    return Chapter(screen).Run();
}

} // namespace nexwire::demo
