#pragma once

#include "common/archivable.h"
#include "interapp/iap_control.h"
#include "platform/support/types.h"

#include <mutex>
#include <string>

class BMessage;
class TLLT;

/** One preference of the family, stored in its own file `<name>.arc` as string "IAP:SrcApp" (who saved it) and
    "IAP:Value". */
class TIAPItem : public koreva::TArchivable {
public:
  explicit TIAPItem(std::string name) : fName(std::move(name)) {}

  const std::string& Name() const { return fName; }
  void SetAppSignatureRef(const char* signature) { fSignature = signature; }
  void SetLLTRef(const TLLT* texts) { fTexts = texts; }

  virtual status_t GetBool(bool* value) const;
  virtual status_t GetString(std::string* value) const;
  virtual status_t SetBool(bool value);
  virtual status_t SetString(const std::string& value);

  /** Applies and saves the value of a change notice. */
  status_t SetValue(const BMessage& notice);
  bool LoadValue();
  bool SaveValue();
  /** Adds "IAP:SrcApp" and "IAP:SrcIAPItem", which every message of the item has. */
  void AddDefaultInfo(BMessage* message) const;
  /** Its control in the common window. */
  virtual TIAPControl MakeConfigurationView() const = 0;

protected:
  static constexpr const char* kValueField = "IAP:Value";
  const char* Signature() const { return fSignature; }

private:
  const std::string fName;
  const char* fSignature = "";
  const TLLT* fTexts = nullptr;
};

/** The format of accelerator letters in labels: its first "a" is the placeholder of the letter; empty shows none. */
class TIAPItemAccKeyFormat : public TIAPItem {
public:
  TIAPItemAccKeyFormat() : TIAPItem("AccKeyFormat") {}
  status_t GetString(std::string* value) const override;
  status_t SetString(const std::string& value) override;
  TIAPControl MakeConfigurationView() const override;
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

private:
  mutable std::mutex fMutex; // guards fFormat
  std::string fFormat;
};

/** Whether tool bars are drawn flat. */
class TIAPItemFlatToolBar : public TIAPItem {
public:
  TIAPItemFlatToolBar() : TIAPItem("FlatToolBar") {}
  status_t GetBool(bool* value) const override;
  status_t SetBool(bool value) override;
  TIAPControl MakeConfigurationView() const override;
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

private:
  mutable std::mutex fMutex; // guards fIsFlat
  bool fIsFlat = true;
};
