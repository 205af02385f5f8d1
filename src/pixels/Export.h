#pragma once

/// Exports a symbol from libkelvar-pixels. All others are hidden.
#if defined(_WIN32) && defined(KELVAR_PIXELS_BUILDING)
#define KELVAR_PIXELS_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define KELVAR_PIXELS_EXPORT __declspec(dllimport)
#else
#define KELVAR_PIXELS_EXPORT __attribute__((visibility("default")))
#endif
