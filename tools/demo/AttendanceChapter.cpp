#include "tools/demo/AttendanceChapter.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include <keel/Error.h>
#include <keel/GuidUtil.h>

#include "nexwire/Attendance/Arrange.h"
#include "nexwire/Attendance/Calculation.h"
#include "nexwire/Attendance/Handle.h"
#include "nexwire/Attendance/Record.h"
#include "nexwire/Attendance/Shift.h"
#include "nexwire/LastExchange.h"
#include "tools/demo/ChapterBase.h"

namespace nexwire::demo {
namespace {

constexpr int kTeam = 6;
constexpr const char* kMonth = "2026-03";
constexpr int kDays = 31;

std::string Two(int number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string Person(int number)
{
    return "9E0000000000000000000000000000" + Two(number);
}

/// A month of records: mostly on time, some late, some days missing, one line that nobody can read.
std::string Records()
{
    std::string text = "number,name,time\n";
    for (int day = 1; day <= kDays; ++day) {
        if ((day + 5) % 7 >= 5) { // The month begins on a Sunday.
            continue;
        }
        for (int person = 1; person <= kTeam; ++person) {
            const int draw = (day * 7 + person * 13) % 29;
            if (draw == 3) {
                continue; // Stayed away.
            }
            const std::string head = "0010" + Two(person) + ",,\"" + kMonth + "-" + Two(day) + " ";
            text += head + (draw % 9 == 4 ? "09:" + Two(10 + draw) : "08:" + Two(30 + draw)) + "\"\n";
            text += head + (draw % 7 == 5 ? "17:" + Two(15 + draw) : "18:" + Two(draw)) + "\"\n";
        }
    }
    return text + "001001,,tomorrow\n";
}

class Chapter : private ChapterBase {
public:
    explicit Chapter(Screen& screen) : ChapterBase(screen) {}

    bool Run() { return DefineShift() && Arrange() && Upload() && Calculate() && Print() && Export(); }

private:
    bool DefineShift()
    {
        screen_.Step("Define a shift: 09:00 to 18:00 with an hour of rest, Monday to Friday");
        protocol::AddRestPeriod rest;
        rest.restPeriodName = "Lunch";
        rest.startTime = "12:00";
        rest.endTime = "13:00";
        protocol::RestPeriodConfigResultData restResult;
        protocol::AddPeriod period;
        period.periodName = "Day";
        period.startTime = "09:00";
        period.endTime = "18:00";
        period.startClockBegin = "07:00";
        period.startClockEnd = "12:00";
        period.endClockBegin = "12:30";
        period.lateAllowDuration = 5;
        protocol::PeriodConfigResultData periodResult;
        protocol::ShiftInfo shift;
        shift.shiftName = "Office";
        protocol::ShiftResult shiftResult;
        bool done = PeriodConfigComm::addRestPeriodInfo(restResult, rest);
        period.restPeriodIDList.push_back(restResult.restPeriodConfigResult.restPeriodID);
        done = done && PeriodConfigComm::addPeriodInfo(periodResult, period);
        for (int day = 1; day <= 5; ++day) {
            protocol::ShiftDay& each = shift.shiftDayList.emplace_back();
            each.dayNo = day;
            each.periodIDList.push_back(periodResult.periodConfigResult.periodID);
        }
        done = done && ShiftComm::addShiftRequest(shiftResult, shift);
        shiftID_ = shiftResult.shiftID;
        return Done(done, "shift \"Office\", " + shiftID_);
    }

    bool Arrange()
    {
        screen_.Step("Have a team of " + std::to_string(kTeam) + " follow it");
        protocol::PersonArrange arrangement;
        arrangement.arrange.shiftID = shiftID_;
        arrangement.arrange.startDate = std::string(kMonth) + "-01";
        for (int person = 1; person <= kTeam; ++person) {
            arrangement.personnelIDList.push_back(Person(person));
        }
        return Done(ArrangeComm::setPersonnelArrange(arrangement), "arranged from " + arrangement.arrange.startDate);
    }

    bool Upload()
    {
        screen_.Step("Upload their clock records of a month and have them imported");
        const std::filesystem::path file =
            std::filesystem::temp_directory_path() / ("clock-records-" + Keel::GuidUtil::CreateGuid() + ".csv");
        std::ofstream(file, std::ios::binary) << Records();
        const auto progress = std::make_shared<int>(0);
        std::string upload;
        std::atomic<bool> over{false};
        std::thread watcher([&] {
            while (!over) {
                screen_.Progress("upload", Load(*progress));
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        const bool sent = FileImportEventCommAtt::requestUploadByAttendance(progress, upload, file.u8string());
        over = true;
        watcher.join();
        screen_.Progress("upload", *progress);
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        protocol::ImportAttendanceFiles order;
        order.uploadGuid = upload;
        protocol::FileImportReturnData result;
        const bool imported = sent && FileImportEventCommAtt::requestImportFileByAttendance(result, order);
        const protocol::FileImportReturn& lines = result.fileImportReturn;
        if (!Done(imported,
                  std::to_string(lines.succeeded) + " records taken, " + std::to_string(lines.failed) + " refused")) {
            return false;
        }
        for (const protocol::FileImportFailure& failure : lines.fileImportFailureList) {
            screen_.Failure("line " + std::to_string(failure.lineNo) + ": " + failure.reason);
        }
        return true;
    }

    bool Calculate()
    {
        screen_.Step("Calculate the month");
        protocol::ManualCalcCondition condition;
        condition.startDate = std::string(kMonth) + "-01";
        condition.endDate = std::string(kMonth) + "-" + std::to_string(kDays);
        protocol::ManualResultData result;
        protocol::CalculateStatusData status;
        bool done = CalculateComm::manualCalculate(result, condition);
        for (int i = 0; done && i < 100; ++i) {
            done = CalculateComm::queryCalculateStatus(status);
            screen_.Progress("calculation", status.calculateStatus.progress);
            if (status.calculateStatus.status != 1) {
                break;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return Done(done && status.calculateStatus.status == 2,
                    std::to_string(result.manualResult.personTotal) + " persons calculated");
    }

    /// A column a day, a line a person.
    bool Print()
    {
        screen_.Step("Print the month: in time o, late L, early E, both B, absent A, free .");
        char line[160];
        std::vector<std::string> table;
        std::string days;
        for (int day = 1; day <= kDays; ++day) {
            days += static_cast<char>('0' + day % 10);
        }
        std::snprintf(line, sizeof line, "%-12s %s %7s %7s %7s", "", days.c_str(), "work", "late", "absent");
        table.emplace_back(line);
        for (int person = 1; person <= kTeam; ++person) {
            protocol::MonthCondition condition;
            condition.month = kMonth;
            condition.personnelID = Person(person);
            protocol::MonthDetail month;
            const bool done = AttendanceHandleComm::getMonthDetail(month, condition);
            std::string states;
            int minutes = 0;
            for (const protocol::DayDetail& day : month.dayDetailList) {
                states += Letter(day.status);
                minutes += day.workDuration;
            }
            std::snprintf(line, sizeof line, "%-12s %s %5.1f h %3d min %5d d", month.personnelName.c_str(),
                          states.c_str(), month.workDuration / 60.0, month.lateDuration, month.absenceTotal);
            table.emplace_back(line);
            if (!done || minutes != month.workDuration) {
                return Done(false, "the month of " + month.personnelName);
            }
        }
        for (const std::string& each : table) {
            screen_.Result(each);
        }
        return true;
    }

    static char Letter(const std::string& status)
    {
        return status == "normal"         ? 'o'
               : status == "lateAndEarly" ? 'B'
               : status == "rest"         ? '.'
                                          : static_cast<char>(status[0] - 'a' + 'A');
    }

    bool Export()
    {
        screen_.Step("Export it, a row a person and day");
        protocol::StatisticsCalcCondition condition;
        condition.startDate = std::string(kMonth) + "-01";
        condition.endDate = std::string(kMonth) + "-" + std::to_string(kDays);
        protocol::StatisticsCalcDataData page;
        const bool done = CalculateComm::queryCalculate(page, condition);
        const std::filesystem::path file =
            std::filesystem::temp_directory_path() / ("attendance-" + Keel::GuidUtil::CreateGuid() + ".csv");
        std::ofstream out(file, std::ios::binary);
        out << "number,name,date,shift,work,late,early,absence\n";
        for (const protocol::StatisticsCalc& row : page.statisticsCalcData.statisticsCalcList) {
            out << row.personnelCode << ',' << row.personnelName << ',' << row.attendenceDate << ',' << row.shiftName
                << ',' << row.workDuration << ',' << row.lateDuration << ',' << row.earlyDuration << ','
                << row.absenceDuration << '\n';
        }
        out.close();
        const bool written = done && out.good();
        std::error_code ignored;
        const auto size = std::filesystem::file_size(file, ignored);
        std::filesystem::remove(file, ignored);
        return Done(written && page.statisticsCalcData.total ==
                                   static_cast<std::int32_t>(page.statisticsCalcData.statisticsCalcList.size()),
                    std::to_string(page.statisticsCalcData.total) + " rows, " + std::to_string(size) + " bytes");
    }

    std::string shiftID_;
};

} // namespace

bool RunAttendanceChapter(Screen& screen)
{
    return Chapter(screen).Run();
}

} // namespace nexwire::demo
