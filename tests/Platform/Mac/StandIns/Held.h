#pragma once
#import <Foundation/Foundation.h>

namespace quillane::StandIn {

// What an object of a class holds that was declared without room of its own. Never given back.
id& held(id object, const char* name);
void hold(id object, const char* name, id value); // keeps it

} // namespace quillane::StandIn
