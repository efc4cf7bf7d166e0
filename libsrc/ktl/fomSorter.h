#ifndef KTL_FOMSORTER_H
#define KTL_FOMSORTER_H

#include <util/export.h>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <util/dtString.h>

KTL_API_BEGIN

namespace KORRti {

/// Orders FOM modules by their dependencies: given each module's file name, its model name and
/// the model names it depends on, it gives back the file names so that every module comes after
/// what it depends on. It reads no files; a caller collects the names (for instance through a
/// target's setFomName and setFomDependencies) and adds them.
///
/// A module's rank is one more than the highest rank of its dependencies, 0 for a module that
/// depends on nothing; the result lists the modules by rank, ties in the order the ranking met
/// them. Nothing fails: an unknown dependency counts 0, a dependency that closes a cycle is
/// dropped, and a second file with a model name already taken is ranked under its file name
/// once the other modules are, after what it depends on; each is reported on DtVerbose.
/// ("Depedency" is the operations' spelling.)
class DtFomSorter {
 public:
  DtFomSorter();
  virtual ~DtFomSorter();

  /// Adds a module. A file added before is ignored; a model name taken by another file makes the
  /// file a duplicate.
  virtual void addFom(const DtString& fileName, const DtString& fomName,
                      const std::vector<DtString>& references);
  /// Forgets the modules, but for the duplicates, which stay and are ranked again once another
  /// module is added.
  virtual void clear();
  /// The file names in dependency order, lowest rank first; fileNames is cleared first.
  virtual void getSortedFomFileNames(std::vector<DtString>& fileNames);
  /// Ranks one module, walking its dependencies depth first; visited holds the modules on the
  /// path from where the walk started. Answers the rank.
  virtual int mapFomDepedency(const DtString& fomName, std::set<DtString>& visited);
  /// Ranks every module, unless the ranks are up to date.
  virtual void mapFomDepedencies();
  /// The file of a model name, or the empty text.
  virtual const DtString& fileNameFromFomName(const DtString& fomName) const;
  /// The model name of a file, or the empty text.
  virtual const DtString& fomNameFromFileName(const DtString& fileName) const;
  /// Gives fomName this rank. A model name that has a rank keeps it, and the rank table gains a
  /// row all the same.
  virtual void addFomDependencyMapping(int rank, const DtString& fomName);
  /// Ranks the duplicate files under their file names, behind the modules they depend on.
  virtual void fixDuplicateFomNames();
  /// Makes fomName free in the model name table, by appending "###@@@***" once if it is taken.
  virtual void makeUniqueFomName(DtString& fomName);

 protected:
  /// A module's model name and the model names it depends on.
  using Module = std::pair<DtString, std::vector<DtString>>;

  /// Rank to model name; equal ranks in the order they were inserted.
  std::multimap<int, DtString> rankToFom;
  /// Model name to rank.
  std::map<DtString, int> fomToRank;
  /// File name to (model name, references).
  std::map<DtString, Module> files;
  /// Files whose model name was taken by another file.
  std::map<DtString, Module> duplicateFiles;
  /// Model name to file name.
  std::map<DtString, DtString> fomToFile;
  /// What the look-ups answer when they find nothing.
  DtString emptyName;
  /// The ranks are up to date.
  bool mappingValid;
};

}  // namespace KORRti

KTL_API_END

#endif
