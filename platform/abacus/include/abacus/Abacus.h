#pragma once

// Everything of Abacus, the reader of capability documents of release servers.

#include "abacus/Material.h"
#include "abacus/Program.h"
#include "abacus/Server.h"
#include "abacus/Terminal.h"
