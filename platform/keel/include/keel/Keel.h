#pragma once

// Everything that libkeel offers.
#include "keel/CodePage.h"
#include "keel/Encrypt.h"
#include "keel/Error.h"
#include "keel/Export.h"
#include "keel/FileSlice.h"
#include "keel/GuidUtil.h"
#include "keel/Log.h"
#include "keel/Redact.h"
#include "keel/Singleton.h"
#include "keel/StringUtil.h"
