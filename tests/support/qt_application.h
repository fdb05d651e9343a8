#pragma once

/** The QCoreApplication or QApplication of a test. */
template <typename Application>
class OwnApplication {
  int fCount = 1;
  char fName[5] = "test";
  char* fWords[2] = {fName, nullptr};
  const Application fApplication{fCount, fWords};
};
