#pragma once

#include <string>

namespace TestSupport {

inline const std::string WINDOW = "App/Lumenfold Window";
inline const std::string LEFT_TABS = WINDOW + "/Titlebar/Left Tabs";
inline const std::string HOME = WINDOW + "/App Pane/Home";
inline const std::string SITE = WINDOW + "/Config Pane/Site Configurator";
inline const std::string PROJECT = WINDOW + "/Config Pane/Project Configurator";
inline const std::string SITE_TEXT = SITE + "/Text Panel/Text Editor";
inline const std::string SITE_STATUS = SITE + "/Text Panel/Status Bar/Status Message";
inline const std::string SITE_SAVE = SITE + "/Text Panel/Status Bar/Save Button";
inline const std::string SITE_TEXT_TAB = SITE + "/View Bar/Text View Tab";
inline const std::string SITE_EDITOR_TAB = SITE + "/View Bar/Editor View Tab";
inline const std::string SIDEBAR = SITE + "/Editor Panel/Sidebar";
inline const std::string PANELS = SITE + "/Editor Panel/Panels";
inline const std::string WEBSITE = PANELS + "/Website Panel";
inline const std::string TITLE_FIELD = WEBSITE + "/Site Form/Title Field";
inline const std::string OUTPUT_FIELD = WEBSITE + "/Site Form/Output Field";
inline const std::string MAIN_FORM = WEBSITE + "/Main Tab Group/Main Tab Form";
inline const std::string LOGO_HEIGHT = MAIN_FORM + "/Heights Row/Logo Height Field";
inline const std::string LOGO_HEIGHT_MOBILE = MAIN_FORM + "/Heights Row/Logo Height Mobile Field";
inline const std::string TAB_TEXT = MAIN_FORM + "/Tab Text Field";
inline const std::string TABS_ROW = WEBSITE + "/Main Tab Group/Tab Preview/Tabs Row";
inline const std::string FAVICONS = WEBSITE + "/Favicon Picker";
inline const std::string FROM_LOGO = FAVICONS + "/Controls Row/From Logo Checkbox";
inline const std::string HINT = FAVICONS + "/Hint";
inline const std::string LOGO_PICKER = WEBSITE + "/Logo Picker";
inline const std::string PROJECTS = PANELS + "/Projects Panel";
inline const std::string SOCIALS = PANELS + "/Socials Panel";
inline const std::string POLICIES = PANELS + "/Policies Panel";
inline const std::string POLICY_COMBO = POLICIES + "/Selector Row/Item Combo";
inline const std::string POLICY_EDITOR = POLICIES + "/File Editor";
inline const std::string POLICY_STATUS = POLICIES + "/File Status Bar/Status Message";
inline const std::string POLICY_SAVE = POLICIES + "/File Status Bar/Save Button";
inline const std::string SECTION_DIALOG = "App/Edit Section Dialog";
inline const std::string SECTION_EDITOR = SECTION_DIALOG + "/Body/Editor Group/File Editor";

inline std::string left_tab(int number) {
    return LEFT_TABS + "/config-" + std::to_string(number);
}
inline std::string section_tab(const std::string& name) {
    return SIDEBAR + "/" + name + " Tab";
}

} // namespace TestSupport
