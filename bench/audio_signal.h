#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

/** The sound of the measurements: noise that never repeats, so that any few milliseconds of it tell where in
    the track they come from. Soft above 3 kHz, which every codec keeps. Mono, kSignalRate. */
constexpr int kSignalRate = 48000;

/** The first `seconds` of the track; the same samples on every call. */
std::vector<float> timed_noise(double seconds);

/** Moments (s) of the clicks in click_track, 130 to 300 ms apart in no pattern. */
std::vector<double> click_times(double seconds);

/** Silence with a 3 ms burst of noise centred on each of click_times: stays readable when stretched by a method
    that changes the waveform. */
std::vector<float> click_track(double seconds);

/** Writes 16-bit mono samples. False if the file could not be written whole. */
[[nodiscard]] bool write_wav(const std::string& path, const std::vector<float>& samples);

/** Sample on which the loudest 3 ms of heard[first, last) are centred. Nothing if that range is silent or leaves
    the recording. */
std::optional<size_t> loudest_click(std::span<const float> heard, size_t first, size_t last);
