#pragma once
#include "UserFile.h"
#include <QString>

namespace quillane {

// The name of the symbol that stands for a file of this kind, wherever one is listed.
QString fileKindSymbol(UserFile::Kind kind);

} // namespace quillane
