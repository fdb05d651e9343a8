# Programs measured from outside: the sound against the position, and the start of a window.
if(TARGET heard_sound)
  add_executable(audio_chain audio_chain.cpp audio_conditions.cpp audio_errors.cpp audio_signal.cpp mpv_source.cpp)
  target_link_libraries(audio_chain PRIVATE heard_sound)

  add_executable(startup_time startup_time.cpp)
  target_link_libraries(startup_time PRIVATE project_options PkgConfig::HEARD)

  find_package(Qt6 REQUIRED COMPONENTS Widgets)
  add_executable(startup_window startup_window.cpp)
  target_link_libraries(startup_window PRIVATE project_options Qt6::Widgets)
endif()
