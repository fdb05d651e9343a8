#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class GeneralPlugin;

/** The plug-ins of one folder. One thread makes every call. */
class TPluginLoader {
public:
  TPluginLoader();
  TPluginLoader(const TPluginLoader&) = delete;
  TPluginLoader& operator=(const TPluginLoader&) = delete;
  ~TPluginLoader();

  using TWanted = std::function<bool(const std::string& name)>;
  /** Loads and starts those `gen_*.so` of the folder that are wanted, in byte order. An image that cannot be loaded,
      exports no `NewPlugin`, or fails in it is left out; one that fails in `Init` stays. Returns what went wrong, a
     line for each. */
  std::vector<std::string> LoadAll(const std::string& folder, const TWanted& wanted);
  int Count() const { return static_cast<int>(fPlugins.size()); }
  GeneralPlugin* At(int index) const { return fPlugins.at(static_cast<size_t>(index)).object.get(); }
  /** What to call one, and what it says of itself: its own texts, else its file's name. */
  std::string Name(int index) const;
  std::string Info(int index) const;
  /** Cleans up and destroys every plug-in, and unloads those images of which no looper is left. */
  void UnloadAll();

private:
  struct TPlugin {
    std::string fileName;
    void* image;
    std::unique_ptr<GeneralPlugin> object;
  };
  std::string LoadOne(const std::string& folder, const std::string& fileName);
  std::vector<TPlugin> fPlugins;
};

/** $SONIVO_PLUGINS, else the folder "plugins" beside the program's file. */
std::string plugin_folder();
