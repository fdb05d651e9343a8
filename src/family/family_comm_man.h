#pragma once

#include "family/comm_man.h"
#include "family/message_filters.h"

#include <memory>
#include <string>

class TKRVAboutWin;
class TKRVWin;
class TNodeMonitorHandler;

/** What the managers of the two plug-ins have in common: each watches the language files, hears of the changes of the
    family's preferences, hands both on to its windows, and owns an About window beside its main one. */
class TFamilyCommMan : public TCommMan {
public:
  /** `pluginPath`: the plug-in's own file, beside which the languages lie. */
  TFamilyCommMan(const char* name, const char* partnerName, std::string pluginPath);
  ~TFamilyCommMan() override;
  /** Starts the watch, too. */
  thread_id Run() override;
  void MessageReceived(BMessage* message) override;

  /** Before the end: returns when everything that was asked so far is done, so that windows that it closes have
     recorded their state. Any thread but the manager's. */
  void WaitForWindows();
  void NodeLanguageChanged();
  /** The settings hold what the message tells by then. */
  virtual void LanguageChanged(const BMessage& message) = 0;
  virtual void IAPChanged(const BMessage& message);
  void OpenAboutWindowRqtd(const BMessage& message);
  void CloseAboutWindowRqtd();

protected:
  /** To the windows that there are and that want notices. */
  virtual void Forward(BMessage* message) = 0;
  virtual bool FindMainWindowFrame(BRect* frame) const = 0;
  virtual TKRVAboutWin* MakeAboutWindow() const = 0;
  virtual void BringUp(TKRVWin* window) const = 0;

  /** Asks for a window that is to stand beside the main one, where there is one. */
  BMessage BesideRequest(uint32 code) const;
  /** As the request asks. */
  static void MoveBeside(BWindow* window, const BMessage& request);
  void SetAboutWinContent();
  /** Before the manager quits: from then on nothing comes from outside. */
  void EndWatches();
  /** Loads the language anew when another file is chosen, or the file has changed. False when there was no need. */
  bool ReloadLanguage();
  const std::string& PluginPath() const { return fPluginPath; }

private:
  const std::string fPluginPath;
  TKRVAboutWin* fAboutWindow = nullptr; // null until asked for; hidden when its user closes it
  TIAPFilter* fIAPFilter;
  std::unique_ptr<TNodeMonitorHandler> fLanguageWatch;
};
