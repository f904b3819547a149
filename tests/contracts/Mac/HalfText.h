#pragma once
#import <Foundation/Foundation.h>

// A text in which half of a character is missing, which no bytes stand for.
@interface QuillaneHalfText : NSString
@end
