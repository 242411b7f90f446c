// What the memory tools do to the configuration tab beyond the lock that LineOwner brings.
#pragma once

class ConfigurationPanel {
public:
    ConfigurationPanel() = default;
    ConfigurationPanel(const ConfigurationPanel&) = delete;
    ConfigurationPanel& operator=(const ConfigurationPanel&) = delete;
    virtual ~ConfigurationPanel() = default;

    virtual void setEditBannerButtonEnabled(bool enabled) = 0;
};
