// Records what the "Operate" tab shows: nothing more goes out on the line for it.
#pragma once

#include "OperateTab.h"
#include "Trends.h"

// Both outlive the window of the tab.
void feedTrends(const OperateTab& tab, Trends& trends);
