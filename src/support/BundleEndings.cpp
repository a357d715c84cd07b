#include "support/BundleEndings.h"

#include <plist/plist.h>

#include <cstdlib>
#include <cstring>

namespace {

// A dictionary whose keys are the endings, each with the value "1".
const char kBundleEndingsPlist[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>.app</key>
	<string>1</string>
	<key>.bundle</key>
	<string>1</string>
	<key>.component</key>
	<string>1</string>
	<key>.framework</key>
	<string>1</string>
	<key>.plugin</key>
	<string>1</string>
	<key>.kext</key>
	<string>1</string>
	<key>.clr</key>
	<string>1</string>
	<key>.cssplugin</key>
	<string>1</string>
	<key>.menu</key>
	<string>1</string>
	<key>.fs</key>
	<string>1</string>
	<key>.localePlugin</key>
	<string>1</string>
	<key>.loginPlugin</key>
	<string>1</string>
	<key>.monitorPanel</key>
	<string>1</string>
	<key>.prefPane</key>
	<string>1</string>
	<key>.slideSaver</key>
	<string>1</string>
	<key>.saver</key>
	<string>1</string>
	<key>.osax</key>
	<string>1</string>
	<key>.service</key>
	<string>1</string>
	<key>.SpeechVoice</key>
	<string>1</string>
	<key>.SpeechSynthesizer</key>
	<string>1</string>
	<key>.SpeechRecognizer</key>
	<string>1</string>
	<key>.sreporter</key>
	<string>1</string>
	<key>.pkg</key>
	<string>1</string>
	<key>.dvdproj</key>
	<string>1</string>
	<key>.xcodeproj</key>
	<string>1</string>
	<key>.xcode</key>
	<string>1</string>
	<key>.pbproj</key>
	<string>1</string>
	<key>.calcview</key>
	<string>1</string>
	<key>.fmplugin</key>
	<string>1</string>
</dict>
</plist>
)";

std::set<std::string> readEndings()
{
    std::set<std::string> endings;
    plist_t dict = nullptr;
    plist_from_xml(kBundleEndingsPlist, uint32_t(std::strlen(kBundleEndingsPlist)), &dict);
    if (!dict || plist_get_node_type(dict) != PLIST_DICT) {
        if (dict) plist_free(dict);
        return endings;
    }
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(dict, &iter);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dict, iter, &key, &value);
        if (!key) break;
        endings.insert(key);
        std::free(key);
    }
    std::free(iter);
    plist_free(dict);
    return endings;
}

}  // namespace

namespace BundleEndings {

const std::set<std::string>& Get()
{
    static const std::set<std::string> endings = readEndings();
    return endings;
}

}  // namespace BundleEndings
