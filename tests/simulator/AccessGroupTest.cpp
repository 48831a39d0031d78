#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Client.h"

namespace {

using test::Device;
using test::Person;
using test::Reply;
using test::Site;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kGroups = "accessController/accessGroups";
constexpr int kRefusing = 13; // Takes nothing at the first attempt.
constexpr int kOffline = 14;

enum GroupState { kNew, kChanged, kDownloading, kDownloaded, kFailedGroup, kStoppedGroup };
enum DownloadState { kNothing, kWaiting, kSending, kSent, kFailed, kStopped };

std::string PersonList(const std::vector<int>& numbers)
{
    std::string list;
    for (const int number : numbers) {
        list += (list.empty() ? "" : ",") + std::string("{\"personnelGuid\":\"") + Person(number) +
                "\",\"personnelNo\":\"" + std::to_string(1000 + number) + "\",\"personnelName\":\"Name" +
                std::to_string(number) + "\"}";
    }
    return "[" + list + "]";
}

std::string ObjectList(const std::vector<int>& devices)
{
    std::string list;
    for (const int device : devices) {
        list += (list.empty() ? "" : ",") + std::string("{\"deviceGuid\":\"") + Device(device) +
                "\",\"objectGuid\":\"door-" + std::to_string(device) +
                "\",\"objectGroupGuid\":\"\",\"objectName\":\"Door\",\"objectNo\":1,\"objectType\":1}";
    }
    return "[" + list + "]";
}

std::string AddBody(const std::string& name, const std::vector<int>& persons, const std::vector<int>& devices)
{
    return "{\"accessGroupAddParam\":{\"name\":\"" + name +
           "\",\"secheduleGuid\":\"51000000000000000000000000000001\",\"description\":\"d\",\"personnelAddList\":" +
           PersonList(persons) + ",\"objectAddList\":" + ObjectList(devices) + "}}";
}

class AccessGroupTest : public testing::Test {
protected:
    std::string Add(const std::string& name, const std::vector<int>& persons, const std::vector<int>& devices)
    {
        const Reply reply = site.Put(kGroups, AddBody(name, persons, devices));
        EXPECT_EQ(reply.Code(), "0-0") << reply.body;
        return reply.Text("/data/accessGroupModifyResult/accessGroupGuid");
    }
    Reply Modify(const std::string& group, const std::string& members)
    {
        return site.Put(kGroups + "/" + group, "{\"accessGroupModifyParam\":{" + members + "}}");
    }
    Reply Read(const std::string& group) { return site.Post(kGroups + "/" + group); }
    Reply Download(const std::string& group, bool take = false, int mode = 0)
    {
        return site.Put("accessController/accessDownload",
                        "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" + group +
                            "\",\"deleteGroup\":" + (take ? "true" : "false") +
                            ",\"downloadMode\":" + std::to_string(mode) + "}]}}");
    }
    Reply Progress(const std::string& group) { return site.Post("accessController/downloadProgress/" + group); }
    Reply Details(const std::string& route, const std::string& group, const std::string& device, bool narrow = false,
                  const std::string& filter = {})
    {
        return site.Post("accessController/" + route,
                         "{\"deviceDownloadDetailsCont\":{\"DetailsQueryCondition\":{\"deviceGuid\":\"" + device +
                             "\",\"groupGuid\":\"" + group + "\"},\"isQuery\":" + (narrow ? "true" : "false") +
                             ",\"DetailsFilterCondition\":{" + filter + "}}}");
    }
    std::vector<std::string> OnDevice(int device)
    {
        return site.Post("accessController/downloadPersons/" + Device(device))
            .Texts("/data/downloadedPerson/personList", "personGuid");
    }

    Site site;
};

TEST_F(AccessGroupTest, KeepsWhatItIsGiven)
{
    EXPECT_EQ(site.Post(kGroups).Print("/data"), "{\"accessGroupQueryResponseList\":[]}");
    const Reply added = site.Put(kGroups, AddBody("Lab \\\"A\\\" \xF0\x9F\x94\x91", {1, 2}, {1}));
    EXPECT_EQ(added.Text("/data/accessGroupModifyResult/name"), "Lab \"A\" \xF0\x9F\x94\x91");
    EXPECT_EQ(added.Int("/data/accessGroupModifyResult/accessGroupState"), kNew);
    const std::string group = added.Text("/data/accessGroupModifyResult/accessGroupGuid");
    EXPECT_EQ(group.size(), 32u);

    const Reply read = Read(group);
    const std::string base = "/data/accessGroupQueryResponse";
    EXPECT_EQ(read.Text(base + "/accessGroupGuid"), group);
    EXPECT_EQ(read.Text(base + "/secheduleGuid"), "51000000000000000000000000000001");
    EXPECT_EQ(read.Print(base + "/personnelResList"), PersonList({1, 2}));
    EXPECT_EQ(read.Print(base + "/objectResList"), ObjectList({1}));

    Add("Second", {}, {});
    EXPECT_THAT(site.Post(kGroups).Texts("/data/accessGroupQueryResponseList", "name"),
                ElementsAre("Lab \"A\" \xF0\x9F\x94\x91", "Second"));
}

TEST_F(AccessGroupTest, PartialChangeTouchesOnlyWhatWasSent)
{
    const std::string group = Add("First", {1, 2}, {1, 2});
    const std::string before = Read(group).Print("/data/accessGroupQueryResponse");

    EXPECT_EQ(Modify(group, "\"name\":\"Renamed\"").Code(), "0-0");
    std::string renamed = before;
    renamed.replace(renamed.find("First"), 5, "Renamed");
    EXPECT_EQ(Read(group).Print("/data/accessGroupQueryResponse"), renamed);

    EXPECT_EQ(Modify(group, "\"description\":\"\"").Code(), "0-0");
    EXPECT_EQ(Read(group).Text("/data/accessGroupQueryResponse/description"), "");
    EXPECT_EQ(Read(group).Text("/data/accessGroupQueryResponse/name"), "Renamed");

    // Add and remove in one order; adding who is there already replaces, removing who is not there does nothing.
    const Reply changed =
        Modify(group, "\"personnelAddList\":" + PersonList({2, 3}) + ",\"personnelRemoveList\":[{\"personnelGuid\":\"" +
                          Person(1) + "\"},{\"personnelGuid\":\"nobody\"}]");
    EXPECT_EQ(changed.Int("/data/accessGroupModifyResult/accessGroupState"), kChanged);
    EXPECT_EQ(Read(group).Print("/data/accessGroupQueryResponse/personnelResList"), PersonList({2, 3}));

    Modify(group, "\"objectAddList\":[],\"objectRemoveList\":[{\"deviceGuid\":\"" + Device(1) +
                      "\",\"objectGuid\":\"door-1\"},{\"deviceGuid\":\"" + Device(2) +
                      "\",\"objectGuid\":\"door-1\"}]");
    EXPECT_EQ(Read(group).Print("/data/accessGroupQueryResponse/objectResList"), ObjectList({2}));
}

TEST_F(AccessGroupTest, Refuses)
{
    const std::string group = Add("Taken", {1}, {1});
    Add("Other", {}, {});
    const struct {
        const char* what;
        std::string path;
        std::string body;
        std::string code;
        std::string says;
    } cases[] = {
        {"name twice", kGroups, AddBody("Taken", {}, {}), "3-22", "Taken"},
        {"empty name", kGroups, AddBody("", {}, {}), "3-7", "accessGroupAddParam.name"},
        {"no name", kGroups, "{\"accessGroupAddParam\":{\"description\":\"x\"}}", "3-7", "name"},
        {"unknown device", kGroups, AddBody("X", {1}, {77}), "3-21", Device(77)},
        {"number for a text", kGroups, "{\"accessGroupAddParam\":{\"name\":5}}", "3-8", "not text"},
        {"object for a list", kGroups, "{\"accessGroupAddParam\":{\"name\":\"X\",\"personnelAddList\":{}}}", "3-8",
         "not a list"},
        {"misspelled key", kGroups, "{\"accessGroupAddParam\":{\"name\":\"X\",\"scheduleGuid\":\"S\"}}", "3-9",
         "scheduleGuid"},
        {"modification's root for a creation", kGroups, "{\"accessGroupModifyParam\":{\"name\":\"X\"}}", "3-6",
         "accessGroupAddParam"},
        {"a second root", kGroups, "{\"accessGroupAddParam\":{\"name\":\"X\"},\"more\":1}", "3-6", ""},
        {"a list", kGroups, "[]", "3-6", ""},
        {"empty body", kGroups, "", "3-5", "empty"},
        {"not JSON", kGroups, "{\"accessGroupAddParam\":", "3-5", "offset"},
        {"trailing text", kGroups, AddBody("X", {}, {}) + "<html>", "3-5", ""},
        {"not UTF-8", kGroups, "{\"accessGroupAddParam\":{\"name\":\"\xC3\"}}", "3-5", ""},
        {"unknown group", kGroups + "/nothing", "{\"accessGroupModifyParam\":{\"name\":\"X\"}}", "3-20", "nothing"},
        {"renamed to a taken name", kGroups + "/" + group, "{\"accessGroupModifyParam\":{\"name\":\"Other\"}}", "3-22",
         "Other"},
        {"renamed to nothing", kGroups + "/" + group, "{\"accessGroupModifyParam\":{\"name\":\"\"}}", "3-7", "name"},
        {"download of nothing", "accessController/accessDownload", "{\"accessDownload\":{\"accessGroupDownList\":[]}}",
         "3-31", ""},
        {"download of an unknown group", "accessController/accessDownload",
         "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"zz\"}]}}", "3-20", "zz"},
        {"download with the wrong spelling", "accessController/accessDownload",
         "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessGroupGuid\":\"" + group + "\"}]}}", "3-9",
         "accessGroupGuid"},
        {"download of no group in particular", "accessController/accessDownload",
         "{\"accessDownload\":{\"accessGroupDownList\":[{\"deleteGroup\":false}]}}", "3-7", "accessgroupGuid"},
        {"stop without download", "accessController/stopDownload/" + group, "", "3-33", group},
        {"repeat without download", "accessController/reDownload/" + group, "", "3-33", group},
        {"face status of an unknown device", "accessController/modifyfacestatus/d", "", "3-21", "d"},
        {"state of an unknown group", "internal/accessController/accessGroupStatusChange",
         "{\"accessGroupStatusChange\":{\"accessGroupGuidList\":[\"q\"],\"accessGroupState\":1}}", "3-20", "q"},
    };
    const std::string before = site.Post(kGroups).body;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Reply reply = site.Put(c.path, c.body);
        EXPECT_EQ(reply.status, 200u);
        EXPECT_EQ(reply.Code(), c.code) << reply.body;
        EXPECT_THAT(reply.Text("/msg"), HasSubstr(c.says));
        EXPECT_EQ(reply.Print("/data"), "{}");
    }
    EXPECT_EQ(site.Post(kGroups).body, before) << "a refusal left something behind";
    EXPECT_EQ(Progress("nothing").Code(), "3-20");
    EXPECT_EQ(Read("nothing").Code(), "3-20");
    EXPECT_EQ(site.Post("accessController/downloadedCards/d").Code(), "3-21");
}

TEST_F(AccessGroupTest, DownloadAdvancesWithTime)
{
    const std::string group = Add("G", {1, 4, 8}, {1, 2});
    EXPECT_EQ(Progress(group).Int("/data/groupProgress"), 0);
    EXPECT_EQ(Progress(group).Size("/data/deviceDownloadProgressList"), 0u);
    ASSERT_EQ(Download(group).Code(), "0-0");
    const std::string devices = "/data/deviceDownloadProgressList";
    const struct {
        int advanceMs;
        int group;
        int device;
        int state;
        std::size_t held;
    } steps[] = {{0, 0, 0, kSending, 0},     {399, 0, 0, kSending, 0},   {1, 33, 33, kSending, 1},
                 {500, 66, 66, kSending, 2}, {299, 66, 66, kSending, 2}, {1, 100, 100, kSent, 3},
                 {9999, 100, 100, kSent, 3}};
    for (const auto& step : steps) {
        SCOPED_TRACE(step.group);
        site.Advance(step.advanceMs);
        const Reply progress = Progress(group);
        EXPECT_EQ(progress.Int("/data/groupProgress"), step.group);
        EXPECT_EQ(progress.Int("/data/accessGroupState"), step.state == kSent ? kDownloaded : kDownloading);
        ASSERT_EQ(progress.Size(devices), 2u);
        for (const int i : {0, 1}) {
            const std::string entry = devices + "/" + std::to_string(i);
            EXPECT_EQ(progress.Text(entry + "/deviceGuid"), Device(i + 1));
            EXPECT_EQ(progress.Int(entry + "/deviceProgress"), step.device);
            EXPECT_EQ(progress.Int(entry + "/downloadState"), step.state);
            EXPECT_EQ(OnDevice(i + 1).size(), step.held);
        }
    }
    EXPECT_THAT(OnDevice(1), ElementsAre(Person(1), Person(4), Person(8)));
    EXPECT_EQ(OnDevice(3).size(), 0u);
    const Reply held = site.Post("accessController/downloadPersons/" + Device(1));
    EXPECT_EQ(held.Int("/data/downloadedPerson/personList/1/downloadTime"), 1704067200000 + 800);
    // The fourth and eighth person have two cards.
    EXPECT_EQ(site.Post("accessController/downloadedCards/" + Device(1)).Size("/data/downloadedCardList"), 5u);
}

TEST_F(AccessGroupTest, DetailsTellWhoFailedAndWhy)
{
    const std::string group = Add("G", {1, 2, 8}, {1, kRefusing});
    ASSERT_EQ(Details("downloadDetails", group, "").Code(), "3-33");
    ASSERT_EQ(Download(group).Code(), "0-0");
    site.Advance(500);
    const std::string list = "/data/deviceDownloadDetailsResponse/deviceDownloadDetailList";
    const Reply middle = Details("downloadDetails", group, Device(1));
    EXPECT_EQ(middle.Size(list), 3u);
    EXPECT_EQ(middle.Int(list + "/0/downloadState"), kSent);
    EXPECT_EQ(middle.Int(list + "/1/downloadState"), kSending);
    EXPECT_EQ(middle.Int(list + "/2/downloadState"), kWaiting);

    site.Advance(5000);
    EXPECT_EQ(Progress(group).Int("/data/accessGroupState"), kFailedGroup);
    EXPECT_EQ(Progress(group).Int("/data/deviceDownloadProgressList/1/downloadState"), kFailed);
    const Reply all = Details("downloadDetails", group, "");
    EXPECT_EQ(all.Int("/data/deviceDownloadDetailsResponse/totalNum"), 6);
    EXPECT_EQ(all.Int("/data/deviceDownloadDetailsResponse/successNum"), 3);
    EXPECT_EQ(all.Int("/data/deviceDownloadDetailsResponse/failedNum"), 3);
    const Reply failed = Details("downloadDetails", group, Device(kRefusing));
    EXPECT_EQ(failed.Int(list + "/0/errorCode"), 43);
    EXPECT_NE(failed.Text(list + "/0/errorMsg"), "");

    const std::string session = all.Text("/data/deviceDownloadDetailsResponse/sessionID");
    const struct {
        std::string filter;
        std::size_t found;
    } filters[] = {{"\"personName\":\"NAME2\"", 2},
                   {"\"personGuid\":\"" + Person(8) + "\",\"downloadState\":3", 1},
                   {"\"downloadState\":4", 3},
                   {"\"downloadState\":-1,\"sessionID\":\"" + session + "\"", 6},
                   {"\"sessionID\":\"another\"", 0}};
    for (const auto& filter : filters) {
        EXPECT_EQ(Details("downloadDetails", group, "", true, filter.filter).Size(list), filter.found) << filter.filter;
        EXPECT_EQ(Details("downloadDetails", group, "", false, filter.filter).Size(list), 6u) << filter.filter;
    }

    // Only the eighth person has an iris, only odd ones a face.
    const Reply persons = Details("personStateDetails", group, Device(1));
    const std::string states = "/data/personStateDetailResponse/personStateDetailList";
    EXPECT_EQ(persons.Int(states + "/0/faceState"), kSent);
    EXPECT_EQ(persons.Int(states + "/1/faceState"), kNothing);
    EXPECT_EQ(persons.Int(states + "/0/irisState"), kNothing);
    EXPECT_EQ(persons.Int(states + "/2/irisState"), kSent);
    EXPECT_EQ(Details("personStateDetails", group, "unknown").Code(), "3-21");
}

TEST_F(AccessGroupTest, RepeatSendsOnlyWhatFailed)
{
    const std::string group = Add("G", {1, 2}, {1, kRefusing, kOffline});
    ASSERT_EQ(Download(group).Code(), "0-0");
    EXPECT_EQ(site.Put("accessController/reDownload/" + group).Code(), "3-30");
    EXPECT_EQ(Download(group).Code(), "3-30");
    EXPECT_EQ(Modify(group, "\"personnelAddList\":[]").Code(), "3-30");
    EXPECT_EQ(Modify(group, "\"description\":\"may change\"").Code(), "0-0");
    site.Advance(1000);
    EXPECT_EQ(OnDevice(kRefusing).size(), 0u);

    EXPECT_EQ(site.Put("accessController/reDownload/" + group).Code(), "0-0");
    EXPECT_EQ(Progress(group).Int("/data/deviceDownloadProgressList/0/deviceProgress"), 100);
    EXPECT_EQ(Progress(group).Int("/data/deviceDownloadProgressList/1/deviceProgress"), 0);
    site.Advance(1000);
    EXPECT_EQ(OnDevice(kRefusing).size(), 2u) << "takes them at the second attempt";
    EXPECT_EQ(OnDevice(kOffline).size(), 0u);
    EXPECT_EQ(Progress(group).Int("/data/accessGroupState"), kFailedGroup);

    const std::string withoutOffline =
        "\"objectRemoveList\":[{\"deviceGuid\":\"" + Device(kOffline) + "\",\"objectGuid\":\"door-14\"}]";
    EXPECT_EQ(Modify(group, withoutOffline).Code(), "0-0");
    ASSERT_EQ(Download(group, false, 1).Code(), "0-0");
    EXPECT_EQ(Progress(group).Int("/data/groupProgress"), 100) << "who is there already is not sent again";
    EXPECT_EQ(site.Put("accessController/reDownload/" + group).Code(), "3-32");
}

TEST_F(AccessGroupTest, StopFreezesAndRepeatGoesOn)
{
    const std::string group = Add("G", {1, 2, 3, 4}, {1});
    ASSERT_EQ(Download(group).Code(), "0-0");
    site.Advance(900);
    ASSERT_EQ(site.Put("accessController/stopDownload/" + group).Code(), "0-0");
    site.Advance(60000);
    const Reply stopped = Progress(group);
    EXPECT_EQ(stopped.Int("/data/groupProgress"), 50);
    EXPECT_EQ(stopped.Int("/data/accessGroupState"), kStoppedGroup);
    EXPECT_EQ(stopped.Int("/data/deviceDownloadProgressList/0/downloadState"), kStopped);
    EXPECT_EQ(OnDevice(1).size(), 2u);
    EXPECT_EQ(site.Put("accessController/stopDownload/" + group).Code(), "3-33");

    ASSERT_EQ(site.Put("accessController/reDownload/" + group).Code(), "0-0");
    site.Advance(400);
    EXPECT_EQ(Progress(group).Int("/data/groupProgress"), 75);
    site.Advance(400);
    EXPECT_EQ(Progress(group).Int("/data/accessGroupState"), kDownloaded);
    EXPECT_THAT(OnDevice(1), ElementsAre(Person(1), Person(2), Person(3), Person(4)));
}

TEST_F(AccessGroupTest, TakingOffAGroupLeavesOthersAlone)
{
    const std::string first = Add("First", {1, 2}, {1});
    const std::string second = Add("Second", {2, 3}, {1});
    Download(first);
    Download(second);
    site.Advance(1000);
    EXPECT_THAT(OnDevice(1), ElementsAre(Person(1), Person(2), Person(3)));
    ASSERT_EQ(Download(first, true).Code(), "0-0");
    site.Advance(1000);
    EXPECT_EQ(Progress(first).Int("/data/accessGroupState"), kNew);
    EXPECT_THAT(OnDevice(1), ElementsAre(Person(2), Person(3)));

    // Whoever leaves a group leaves the device with the next download.
    Modify(second, "\"personnelRemoveList\":[{\"personnelGuid\":\"" + Person(2) + "\"}]");
    EXPECT_EQ(Progress(second).Int("/data/accessGroupState"), kChanged);
    Download(second, false, 1);
    site.Advance(1000);
    EXPECT_THAT(OnDevice(1), ElementsAre(Person(3)));
}

TEST_F(AccessGroupTest, ChecksFindConflictingSchedules)
{
    const std::string group = Add("Held", {1, 2}, {1});
    const auto check = [&](const std::string& own, const std::string& schedule, const std::string& door, int person) {
        return site
            .Post("accessController/accessParamCheck",
                  "{\"accessParamCheck\":{\"accessGroupGuid\":\"" + own + "\",\"scheduleGuid\":\"" + schedule +
                      "\",\"doorGuidList\":[\"" + door + "\"],\"personGuidList\":[\"" + Person(person) + "\"]}}")
            .Code();
    };
    EXPECT_EQ(check("", "other", "door-1", 1), "3-34");
    EXPECT_EQ(check("", "51000000000000000000000000000001", "door-1", 1), "0-0");
    EXPECT_EQ(check("", "other", "door-2", 1), "0-0");
    EXPECT_EQ(check("", "other", "door-1", 3), "0-0");
    EXPECT_EQ(check(group, "other", "door-1", 1), "0-0") << "a group does not stand in its own way";
    EXPECT_EQ(check("unknown", "other", "door-1", 1), "3-20");
    const std::string unrelated = Add("Unrelated", {}, {});
    const auto among = [&](const std::string& guid) {
        return site
            .Post("accessController/accessParamCheckForCertainAccessGroups",
                  "{\"accessParamCheckForCertainGroups\":{\"accessGroupGuidList\":[\"" + guid +
                      "\"],\"scheduleGuid\":\"other\",\"doorGuidList\":[\"door-1\"],\"personGuidList\":[\"" +
                      Person(1) + "\"]}}")
            .Code();
    };
    EXPECT_EQ(among(group), "3-34");
    EXPECT_EQ(among(unrelated), "0-0");
}

TEST_F(AccessGroupTest, StatesCanBeReported)
{
    const std::string group = Add("G", {1}, {1, 2});
    EXPECT_EQ(
        site.Put("internal/accessController/accessGroupStatusChange",
                 "{\"accessGroupStatusChange\":{\"accessGroupGuidList\":[\"" + group + "\"],\"accessGroupState\":5}}")
            .Code(),
        "0-0");
    EXPECT_EQ(Read(group).Int("/data/accessGroupQueryResponse/accessGroupState"), kStoppedGroup);
    const auto report = [&](int device, int progress, int state) {
        return site.Put("internal/accessController/accessGroupStatusDownload",
                        "{\"accessGroupStatusDownload\":{\"accessGroupGuid\":\"" + group + "\",\"deviceGuid\":\"" +
                            Device(device) + "\",\"deviceProgress\":" + std::to_string(progress) +
                            ",\"downloadState\":" + std::to_string(state) + "}}");
    };
    EXPECT_EQ(report(1, 50, kSending).Code(), "3-33");
    Download(group);
    EXPECT_EQ(report(1, 40, kSending).Code(), "0-0");
    EXPECT_EQ(report(3, 40, kSending).Code(), "3-33");
    EXPECT_EQ(Progress(group).Int("/data/deviceDownloadProgressList/0/deviceProgress"), 40);
    EXPECT_EQ(report(1, 100, kFailed).Code(), "0-0");
    site.Advance(1000);
    EXPECT_EQ(Progress(group).Int("/data/accessGroupState"), kFailedGroup);
    EXPECT_EQ(site.Put("accessController/modifyfacestatus/" + Device(1)).Code(), "0-0");
    EXPECT_EQ(site.Put("accessController/modifyirisstatus/" + Device(1)).Code(), "0-0");
}

} // namespace
