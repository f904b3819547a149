// What GNUstep lacks of the Mac's file manager.
#pragma once
#import <Foundation/Foundation.h>

@interface NSFileManager (QuillaneTrash)
// Refuses, as on a volume without a Trash.
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resulting error:(NSError**)error;
@end
