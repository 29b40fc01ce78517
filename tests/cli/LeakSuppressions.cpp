// Leaks of the toolkit that tests which draw in their own process must not be blamed for.

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define EDA_TEST_HAS_LEAK_CHECK
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define EDA_TEST_HAS_LEAK_CHECK
#endif

#if defined(EDA_TEST_HAS_LEAK_CHECK)
// Asked for by the leak checker; as in support/lsan.supp, which serves the tool as a process.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() { return "leak:libqoffscreen.so\n"; }
#endif
