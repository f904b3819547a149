#pragma once

namespace quillane::Environment {

// The variables of this process as a program that it starts is given them. Each system's own.
char** ofThisProcess();

} // namespace quillane::Environment
