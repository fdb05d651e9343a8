#pragma once

#include "window/export_panel.h"
#include "window/save_panel.h"

#include <memory>
#include <string>
#include <vector>

class TVesmoEView;

/** The editor window's panels for opening, saving and exporting, and the folder that they show. Owned by the window, on
    its thread; the panels send their answers to the window. */
class TEditorPanels {
public:
  /** Neither is owned. */
  TEditorPanels(BWindow* owner, const TVesmoEView* view) : fOwner(owner), fView(view) {}
  TEditorPanels(const TEditorPanels&) = delete;
  TEditorPanels& operator=(const TEditorPanels&) = delete;

  /** False for a message that is not about a panel. */
  bool Handle(const BMessage& message);
  void LanguageChanged();
  bool IsOneShowing() const;
  /** Stores the folder for the next time. */
  void RememberFolders() const;

private:
  void MItemOpenClicked();
  void MItemSaveAsClicked(const BMessage& message);
  void MItemExportClicked();
  void SetOpenPanelLabel();
  void SetSavePanelLabel();
  void PanelClosed(const BMessage& message);
  /** The folder that a panel shows, which is stored for the next time. */
  void SetOpenPanelFolder(const std::string& folder);
  void SetSavePanelFolder(const std::string& folder);
  void SetSavePanelFileName();
  std::string PanelFolder() const;
  /** Folders that the panels list at their side. */
  std::vector<std::string> Places() const;
  std::string DocumentName() const;

  BWindow* const fOwner;
  const TVesmoEView* const fView;
  std::unique_ptr<TVesmoESavePanel> fSavePanel; // fSavePanel and fOpenPanel: created at first use
  std::unique_ptr<BFilePanel> fOpenPanel;
  std::unique_ptr<TExportPanel> fExportPanel; // a new one for each export
};
