#pragma once

#include "family/comm_man.h"
#include "family/message_filters.h"

#include <memory>
#include <string>

class TKRVAboutWin;
class TKRVWin;
class TNodeMonitorHandler;

/** Base class of both plug-ins' managers. Watches the language files, receives changes of the common preferences,
    forwards both to its windows, and owns the About window. */
class TFamilyCommMan : public TCommMan {
public:
  /** `pluginPath`: the plug-in's image; the language files are next to it. */
  TFamilyCommMan(const char* name, const char* partnerName, std::string pluginPath);
  ~TFamilyCommMan() override;
  /** Also starts watching the language files. */
  thread_id Run() override;
  void MessageReceived(BMessage* message) override;

  /** For shutdown: blocks until all earlier messages are handled, so that closed windows have recorded their state.
      Any thread but the manager's. */
  void WaitForWindows();
  void NodeLanguageChanged();
  /** Called after the message has been applied to the settings. */
  virtual void LanguageChanged(const BMessage& message) = 0;
  virtual void IAPChanged(const BMessage& message);
  void OpenAboutWindowRqtd(const BMessage& message);
  void CloseAboutWindowRqtd();

protected:
  /** Forwards a notice to the open windows. */
  virtual void Forward(BMessage* message) = 0;
  virtual bool FindMainWindowFrame(BRect* frame) const = 0;
  virtual TKRVAboutWin* MakeAboutWindow() const = 0;
  virtual void BringUp(TKRVWin* window) const = 0;

  /** A request for a window next to the main window, if there is one. */
  BMessage BesideRequest(uint32 code) const;
  /** Positions the window as requested. */
  static void MoveBeside(BWindow* window, const BMessage& request);
  void SetAboutWinContent();
  /** For shutdown: stops the language watch and the preference notices. */
  void EndWatches();
  /** Reloads the language if another file was chosen or the file has changed; otherwise false. */
  bool ReloadLanguage();
  const std::string& PluginPath() const { return fPluginPath; }

private:
  const std::string fPluginPath;
  TKRVAboutWin* fAboutWindow = nullptr; // created lazily; hidden when closed
  TIAPFilter* fIAPFilter;
  std::unique_ptr<TNodeMonitorHandler> fLanguageWatch;
};
