#pragma once
#include <cstddef>
#include <string>
#include <sys/types.h>

namespace quillane::ExtendedAttribute {

// The length of the value of an open item's attribute, which is written to `value`; -1 with errno when there is
// none or when it does not fit into `size` bytes. A size of 0 fits nothing. The name is the Mac's; Linux keeps it
// below "user.", where copies from a Mac have it too.
ssize_t read(int item, const std::string& name, void* value, std::size_t size);

} // namespace quillane::ExtendedAttribute
