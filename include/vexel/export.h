/// \file
/// Export macro of the public interface. A shared build exports only what is
/// marked VEXEL_API; everything else stays hidden (default visibility hidden
/// on GCC/Clang, dllexport/dllimport on Windows compilers).
#ifndef VEXEL_EXPORT_H
#define VEXEL_EXPORT_H

#if defined(VEXEL_STATIC)
#define VEXEL_API
#elif defined(_WIN32) || defined(__CYGWIN__)
#if defined(VEXEL_BUILDING)
#define VEXEL_API __declspec(dllexport)
#else
#define VEXEL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__) || defined(__clang__)
#define VEXEL_API __attribute__((visibility("default")))
#else
#define VEXEL_API
#endif

#endif  // VEXEL_EXPORT_H
