// What the declarations of the Mac's frameworks (tools/darwin/declarations) stand on, where GNUstep's Foundation lacks it
// or gives the name to something else. Before every source of Objective-C++.
#pragma once
#import <Foundation/Foundation.h>
#import <objc/blocks_runtime.h>

#ifndef NS_ASSUME_NONNULL_BEGIN
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#endif
#undef API_AVAILABLE
#define API_AVAILABLE(...)
#define QD_EXTERN extern "C"
#undef NS_ENUM
#undef NS_OPTIONS
#define NS_ENUM(type, name)                                                                                  \
    enum __attribute__((enum_extensibility(open))) name : type name;                                         \
    enum name : type
#define NS_OPTIONS(type, name)                                                                               \
    type name;                                                                                               \
    enum __attribute__((flag_enum)) : name
#define NSEventType QuillaneEventType
#define NSRectEdge QuillaneRectEdge

// Nothing is counted.
#undef __weak
#define __weak

@protocol NSSecureCoding;
typedef NSString* NSErrorDomain;
typedef NSString* NSKeyValueChangeKey;
typedef NSString* NSNotificationName;
@interface NSObject (Gaps)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path context:(void*)context;
@end
