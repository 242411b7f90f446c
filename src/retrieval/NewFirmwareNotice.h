// The window that tells of new firmware, as the version check needs it.
#pragma once

#include "Task.h"

class NewFirmwareNotice {
public:
    NewFirmwareNotice() = default;
    NewFirmwareNotice(const NewFirmwareNotice&) = delete;
    NewFirmwareNotice& operator=(const NewFirmwareNotice&) = delete;
    virtual ~NewFirmwareNotice() = default;

    // Modal; ends when the user has closed it.
    virtual Task<> show() = 0;
};
