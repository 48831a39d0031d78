#pragma once

#include "abacus/Types.h"

// Programs: pages of windows that show materials, made by hand or from templates, and the schedules they are played by.
// Positions and sizes are pixels of the program's own resolution.

namespace Abacus {

/// How a text looks.
struct TextStyle {
    Range fontSize; ///< Pixels.
    Options fontName;
    Options alignment;       ///< "left", "middle", "right".
    Options scrollDirection; ///< "none", "left", "right", "up", "down".
    Range scrollSpeed;
    bool isSptColor = false;
    bool isSptTransparent = false;
    ABACUS_PART
};

/// How a material follows the one before it.
struct SwitchEffect {
    Options effect;  ///< "none", "random", "fade", "wipe" ...
    Range durationS; ///< Seconds that a material stays.
    ABACUS_PART
};

/// A window of a page.
struct PageWindow {
    Options materialType; ///< Kinds of materials that it shows.
    Range num;            ///< Windows of this kind on a page.
    Range width;
    Range height;
    Range materialNum; ///< Materials of one window.
    SwitchEffect switchEffect;
    ABACUS_PART
};

/// What a program may be.
struct Program {
    Range nameLength;
    Range remarkLength;
    Options programType;   ///< "normal", "character", "web", "touch".
    Options shareProperty; ///< "public", "private".
    Range width;
    Range height;
    Options resolution; ///< Ready-made ones, as "1920x1080".
    Range pageNum;
    Range programNum; ///< Programs in all.
    bool isSptApproval = false;
    bool isSptPreview = false;
    bool isSptCopy = false;
    bool isSptBackgroundMusic = false;
    ABACUS_DOCUMENT
};

/// By what programs can be searched.
struct ProgramSearchAbility {
    Range maxResults; ///< Results on a page.
    Options searchBy; ///< "name", "creator", "createTime", "approveState", "resolution".
    Options approveState;
    Options orderBy;
    Range nameLength;
    bool isSptFuzzyName = false;
    ABACUS_DOCUMENT
};

/// What a program may hold in one resolution.
struct ResolutionLimit {
    std::string resolution; ///< As "1920x1080".
    Range pageNum;
    Range windowNum; ///< On a page.
    Range videoWindowNum;
    Range streamWindowNum;
    ABACUS_PART
};

/// What changes with what else a program holds.
struct ProgramDynamicCap {
    std::vector<ResolutionLimit> resolutionList;
    Range totalSizeMB;
    bool isSptMixedResolution = false;
    ABACUS_DOCUMENT
};

/// What a page may be.
struct Page {
    Range nameLength;
    Options playMode; ///< "auto": as long as its longest material; "fixed": for playDurationS.
    Range playDurationS;
    Range windowNum;
    std::vector<PageWindow> windowList;
    TextStyle textStyle;
    SwitchEffect pageSwitch;
    Options layoutTemplate; ///< Ready-made divisions of the page.
    bool isSptBackgroundPicture = false;
    bool isSptOverlap = false; ///< Windows may cover each other.
    ABACUS_DOCUMENT
};

/// What windows of a kind may be beside others.
struct WindowCombination {
    std::string materialType;
    Options excludes; ///< Kinds that a page with such a window cannot have.
    Range num;
    Range decodeNum; ///< Videos that play at once.
    ABACUS_PART
};

/// What changes with what else a page holds.
struct WinDynamicCap {
    std::vector<WindowCombination> combinationList;
    Range totalDecodeNum;
    bool isSptCameraOverlay = false;
    ABACUS_DOCUMENT
};

/// What a template of programs may be.
struct TemplateCap {
    Range nameLength;
    Range remarkLength;
    Options templateType; ///< "system", "user".
    Options shareProperty;
    Range templateNum;
    Range width;
    Range height;
    bool isSptThumbnail = false;
    bool isSptFromProgram = false; ///< A program can be made into one.
    ABACUS_DOCUMENT
};

/// By what templates can be searched.
struct TemplateSearchCap {
    Range maxResults; ///< Results on a page.
    Options searchBy; ///< "name", "type", "creator", "resolution".
    Options orderBy;
    Range nameLength;
    ABACUS_DOCUMENT
};

/// One kind of schedule.
struct ScheduleKind {
    std::string type; ///< "daily", "weekly", "loop", "custom", "default".
    Range dayNum;     ///< Days that can be told apart.
    Range spanNum;    ///< Time spans of a day.
    Range programNum; ///< Programs of a span.
    ABACUS_PART
};

/// What a schedule may be.
struct PlaySchedule {
    Range nameLength;
    Range remarkLength;
    Options scheduleMode; ///< "normal", "selfDefine".
    Options shareProperty;
    Range scheduleNum;
    std::vector<ScheduleKind> kindList;
    Range minSpanS; ///< Seconds; shortest time span.
    bool isSptCrossMidnight = false;
    bool isSptInsertProgram = false; ///< A program can be played at once, before all schedules.
    bool isSptApproval = false;
    ABACUS_DOCUMENT
};

} // namespace Abacus
