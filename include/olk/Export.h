/// \file
/// Export macros of the default host libraries. Where Vexel is a Windows
/// DLL, the logger (OLK_LOG_API) and the base helpers (OLK_BASE_API) are DLLs
/// of their own, and each marks its functions dllexport while it is built.
/// Code using the headers sees no dllimport: functions reached through an
/// import library need none, so the same declarations fit a host's own
/// logging or base library, whether a DLL or a static one.
#ifndef OLK_EXPORT_H
#define OLK_EXPORT_H

#if defined(_WIN32) || defined(__CYGWIN__)
#define OLK_DLL_EXPORT __declspec(dllexport)
#elif defined(__GNUC__) || defined(__clang__)
#define OLK_DLL_EXPORT __attribute__((visibility("default")))
#else
#define OLK_DLL_EXPORT
#endif

#if defined(OLK_LOG_BUILDING)
#define OLK_LOG_API OLK_DLL_EXPORT
#else
#define OLK_LOG_API
#endif

#if defined(OLK_BASE_BUILDING)
#define OLK_BASE_API OLK_DLL_EXPORT
#else
#define OLK_BASE_API
#endif

#endif  // OLK_EXPORT_H
