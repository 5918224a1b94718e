# Audio mediation tests in v4_docview_tests.
target_sources(v4_docview_tests PRIVATE
  utils/BasicAudioMAFTest.cpp
  utils/ExchangeRingTest.cpp
  utils/MAFMediatorTest.cpp
  utils/MAFParamMediatorTest.cpp)
