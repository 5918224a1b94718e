# Audio mediation sources of v4_docview.
target_sources(v4_docview PRIVATE
  utils/BasicAudioMAF.cpp
  utils/BasicMAF.cpp
  utils/BasicMAFProfile.cpp
  utils/ChangeList.cpp
  utils/ExchangeRing.cpp
  utils/MAFMediator.cpp
  utils/MAFParamMediator.cpp)
