// Marks global data of the shared library for import on Windows; functions are exported as a whole.
#pragma once

#if defined(_WIN32) && !defined(EDA_BUILDING_LIBRARY)
#define EDA_DATA __declspec(dllimport)
#else
#define EDA_DATA
#endif
