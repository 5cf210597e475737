#pragma once

#include <string>

namespace Lumenfold::Paths {

inline const std::string ROOT = "App";
inline const std::string WINDOW_NAME = "Lumenfold Window";
inline const std::string WINDOW = ROOT + "/" + WINDOW_NAME;
inline const std::string APP_PANE = WINDOW + "/App Pane";
inline const std::string CONFIG_PANE = WINDOW + "/Config Pane";
inline const std::string LEFT_TABS = WINDOW + "/Titlebar/Left Tabs";
inline const std::string APP_TAB = WINDOW + "/Titlebar/Right Tabs/App Tab";
inline const std::string SITE_CONFIGURATOR = CONFIG_PANE + "/Site Configurator";
inline const std::string PROJECT_CONFIGURATOR = CONFIG_PANE + "/Project Configurator";

inline const std::string MESSAGE_DIALOG = ROOT + "/Message Dialog";
inline const std::string CONFIRM_DIALOG = ROOT + "/Confirm Dialog";
inline const std::string NEW_WEBSITE_DIALOG = ROOT + "/New Website Dialog";
inline const std::string ADD_POLICY_DIALOG = ROOT + "/Add Policy Dialog";
inline const std::string ADD_SECTION_DIALOG = ROOT + "/Add Section Dialog";
inline const std::string EDIT_SECTION_DIALOG = ROOT + "/Edit Section Dialog";
inline const std::string ADD_SOCIAL_DIALOG = ROOT + "/Add Social Dialog";
inline const std::string ADD_PROJECT_DIALOG = ROOT + "/Add Project Dialog";
inline const std::string PROMOTE_DIALOG = ROOT + "/Promote Dialog";
inline const std::string ADD_TOPIC_DIALOG = ROOT + "/Add Topic Dialog";
inline const std::string ADD_DEPENDENCY_DIALOG = ROOT + "/Add Dependency Dialog";
inline const std::string ADD_FACT_DIALOG = ROOT + "/Add Fact Dialog";
inline const std::string ADD_DOWNLOAD_DIALOG = ROOT + "/Add Download Dialog";

} // namespace Lumenfold::Paths
