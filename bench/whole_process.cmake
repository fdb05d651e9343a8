# Programs measured from outside: the sound against the position, and the start of a window.
if(TARGET heard_sound)
  add_executable(audio_chain audio_chain.cpp audio_conditions.cpp audio_errors.cpp audio_signal.cpp library_source.cpp
    player_run.cpp engine_source.cpp)
  target_link_libraries(audio_chain PRIVATE heard_sound sonivo_app)

  add_executable(gapless_join gapless_join.cpp audio_signal.cpp)
  target_link_libraries(gapless_join PRIVATE heard_sound sonivo_app)

  add_executable(song_parts song_parts.cpp audio_signal.cpp)
  target_link_libraries(song_parts PRIVATE heard_sound sonivo_app)

  add_executable(stamp_chain stamp_chain.cpp audio_signal.cpp)
  target_link_libraries(stamp_chain PRIVATE heard_sound x_window)
  add_executable(word_chain word_chain.cpp audio_signal.cpp)
  target_link_libraries(word_chain PRIVATE heard_sound x_window)
  add_executable(listen_chain listen_chain.cpp)
  target_link_libraries(listen_chain PRIVATE heard_sound x_window)

  # Not among the player's own plug-ins: stamp_chain.sh puts it beside a copy of the player.
  add_library(gen_ChainProbe MODULE chain_probe.cpp)
  set_target_properties(gen_ChainProbe PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/bench_plugins
    INSTALL_RPATH "$ORIGIN/..")
  target_link_libraries(gen_ChainProbe PRIVATE vesmo_platform heard_sound)

  add_executable(startup_time startup_time.cpp)
  target_link_libraries(startup_time PRIVATE project_options PkgConfig::HEARD)

  find_package(Qt6 REQUIRED COMPONENTS Widgets)
  add_executable(startup_window startup_window.cpp)
  target_link_libraries(startup_window PRIVATE project_options Qt6::Widgets)
endif()
