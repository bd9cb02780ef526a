// QX_API: what leaves the library. Everything else is hidden.
#pragma once

#if defined(_WIN32)
#define QX_API __declspec(dllexport)
#else
#define QX_API __attribute__((visibility("default")))
#endif
