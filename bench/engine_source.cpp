#include "bench/engine_source.h"

#include <chrono>
#include <stdexcept>
#include <thread>

void TEngineSource::Play(const std::string& path) {
  fEngine->Load(path, false);
  for (int i = 0; i < 500; ++i) {
    if (PositionSec() > 0.2) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error("cannot play " + path);
}
