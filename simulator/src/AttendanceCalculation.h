#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "src/AttendanceRules.h"
#include "src/Engine.h"

namespace nexwire::simulator {

/// What a person is to work on a day.
struct DayPlan {
    std::string shiftName;
    std::vector<Json> periods; ///< None: a free day.
    bool arranged = false;
    bool temporary = false;
    bool needClock = true;
};

/// From arrangements, records and corrections to results, for one request. Results are rows, one a period or free day,
/// and a document a day that sums them up.
class Calculation {
public:
    static constexpr const char* kRows = "calculationRows";
    static constexpr const char* kDays = "attendanceDays";

    explicit Calculation(Handling& handling);

    /// Replaces the results of a person's days.
    void Run(const Json& person, int first, int last);
    DayPlan PlanOf(const Json& person, int day);
    /// Whether anything was ever arranged for the person.
    bool IsArranged(const Json& person);
    /// An organisation and those above it.
    std::vector<std::string> Chain(const std::string& org);

private:
    struct Correction {
        std::string id;
        std::string type;
        std::string name; ///< Of the kind of leave.
        Span minutes;     ///< Since 1970.
    };
    struct Holiday {
        int first = 0;
        int last = 0;
        bool yearly = false;
        int level = 3;
    };

    const Holiday* HolidayOn(int day) const;
    std::vector<std::string> Owners(const Json& person);
    void AddPeriods(DayPlan& plan, const Json* ids);
    void FollowShift(DayPlan& plan, const std::string& shiftID, int day, int begin);
    WorkPeriod Stretch(const Json& period, bool needClock);
    OvertimeTerms Terms(const char* dayType, int day) const;
    void Day(const Json& head, const Json& person, int day);
    Json Row(const Json& head, const DayPlan& plan, const Json& period, const PeriodOutcome& outcome, int level,
             const std::string& leaveName);

    Handling& handling_;
    Allocator& memory_;
    Json rule_;
    Json overtime_;
    std::vector<Holiday> holidays_;
    std::map<std::string, std::vector<Json>> arrangements_;      ///< By owner, the latest first.
    std::map<std::string, Json> temporary_;                      ///< By owner.
    std::map<std::string, std::vector<int>> clocks_;             ///< By number of the person; minutes since 1970.
    std::map<std::string, std::vector<Correction>> corrections_; ///< By identifier of the person.
    std::map<std::string, std::vector<std::string>> chains_;     ///< By organisation.
};

} // namespace nexwire::simulator
