#pragma once

#include "plugin/comm_man.h"
#include "plugin/message_filters.h"

#include <memory>
#include <string>

class TNodeMonitorHandler;

/** What the plug-in, the menus and the partner ask of either manager. The fields that a code carries stand beside it.
 */
enum : uint32 {
  kMsgOpenMain = 'Somr',
  kMsgPrepareAbout = 'Spar',
  kMsgOpenAbout = 'Soar', // bool "BesideDlg"; with it, when true, rect "WinFrame"
  kMsgPreparePref = 'Sppr',
  kMsgOpenPref = 'Sopr', // to the companion; fields as above
  kMsgCloseAbout = 'Scar',
  kMsgCloseFineTag = 'Scfr',
  kMsgCloseCommonPref = 'Scsr',
  kMsgCloseMain = 'Scmr',
  kMsgMainClosed = 'mwcl',   // messenger "window": which one
  kMsgLanguageNode = '_nlc', // from the watch of the language files
  kMsgLanguageChanged = '_lgc',
};

/** What the managers of the two plug-ins have in common: each watches the language files, and hears of the changes of
    the family's preferences. */
class TFamilyCommMan : public TCommMan {
public:
  /** `pluginPath`: the plug-in's own file, beside which the languages lie. */
  TFamilyCommMan(const char* name, const char* partnerName, std::string pluginPath);
  ~TFamilyCommMan() override;
  /** Starts the watch, too. */
  thread_id Run() override;

protected:
  /** Before the manager quits: from then on nothing comes from outside. */
  void EndWatches();
  /** Loads the language anew when another file is chosen, or the file has changed. False when there was no need. */
  bool ReloadLanguage();
  const std::string& PluginPath() const { return fPluginPath; }

private:
  const std::string fPluginPath;
  TIAPFilter* fIAPFilter;
  std::unique_ptr<TNodeMonitorHandler> fLanguageWatch;
};
