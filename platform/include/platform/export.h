/* export.h - marks what a platform library offers, so that it can hide everything else. */
#ifndef PLATFORM_EXPORT_H
#define PLATFORM_EXPORT_H

#define PLATFORM_API __attribute__((visibility("default")))

#endif
