#pragma once

#include "platform/storage/resources.h"

/** The images of the tool bar's buttons, compiled into the program: type B_RAW_TYPE, each under its button's name. */
BResources tool_bar_images();
