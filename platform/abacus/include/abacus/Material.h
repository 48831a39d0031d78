#pragma once

#include "abacus/Types.h"

// Materials: pictures, videos, texts and streams that programs are made of.

namespace Abacus {

/// A kind of file that a server takes.
struct MaterialFormat {
    std::string type; ///< "picture", "video", "audio", "document", "webPage", "flash".
    Options format;   ///< Endings of file names, as "jpg".
    Range sizeKB;
    Range width; ///< Pixels; of pictures and videos.
    Range height;
    Range durationS; ///< Seconds; of videos and sounds.
    ABACUS_PART
};

/// A material that is not a file but a source.
struct DynamicMaterial {
    std::string type; ///< "webPage", "camera", "rss", "call", "dataSource", "touch".
    Range addressLength;
    Options protocol;        ///< Of streams, as "rtsp".
    Range refreshS;          ///< Seconds between two reads of the source.
    bool isSptLogin = false; ///< User name and password can be given for it.
    ABACUS_PART
};

/// What may be put into the library of materials.
struct MaterialAbility {
    Range nameLength;
    Range remarkLength;
    Options materialType;  ///< "static" a file, "dynamic" a source.
    Options shareProperty; ///< "public", "private".
    Range materialNum;     ///< Materials in all.
    Range totalSizeMB;
    std::vector<MaterialFormat> formatList;
    std::vector<DynamicMaterial> dynamicList;
    bool isSptReplace = false;  ///< A file can be exchanged under its identifier.
    bool isSptApproval = false; ///< Materials wait for approval before they are used.
    bool isSptThumbnail = false;
    bool isSptResume = false; ///< An interrupted upload goes on where it broke off.
    ABACUS_DOCUMENT
};

/// By what the library of materials can be searched.
struct MaterialSearchAbility {
    Range maxResults;     ///< Results on a page.
    Options searchBy;     ///< "name", "type", "uploader", "uploadTime", "approveState", "size".
    Options approveState; ///< "notApproved", "approved", "refused".
    Options orderBy;
    Range nameLength;
    bool isSptFuzzyName = false; ///< A part of the name is enough.
    ABACUS_DOCUMENT
};

/// What a touch window may show when it is touched.
struct TouchWndMaterial {
    Options materialType; ///< Kinds of materials behind a touch.
    Range materialNum;    ///< Materials of a window.
    Options gesture;      ///< "click", "slide", "zoom".
    Range backTimeS;      ///< Seconds without a touch until the program goes on.
    bool isSptNestedPage = false;
    ABACUS_DOCUMENT
};

/// What an audio window may play. Spelled Matarial.
struct AudioWidMatarialAbility {
    Options format; ///< Endings of file names, as "mp3".
    Range sizeKB;
    Range materialNum;            ///< Materials of a window.
    Range volume;                 ///< Per cent.
    Options playMode;             ///< "order", "random", "single".
    bool isSptBackground = false; ///< Plays while other windows sound.
    ABACUS_DOCUMENT
};

} // namespace Abacus
