#pragma once

#include "lane/lane_colors.h"
#include "lane/lane_model.h"
#include "platform/interface/picture.h"

#include <string>

/** The height of the labels above the sound. */
inline constexpr float kLaneLabelHeight = 16;

/** What is drawn over the sound: markers, their labels and the onsets; or a text, if there is one. Pure: any thread. */
BPicture lane_overlay(const TLaneModel& model, const TLaneColors& colors, BPoint size, const std::string& text);
