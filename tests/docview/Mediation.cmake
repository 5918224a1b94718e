# Audio mediation tests in v4_docview_tests.
target_sources(v4_docview_tests PRIVATE utils/MAFMediatorTest.cpp)
