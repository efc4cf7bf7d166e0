#include <ktl/fomSorter.h>

#include <ostream>

#include <util/notify.h>

namespace KORRti {

DtFomSorter::DtFomSorter() : mappingValid(true) {}

DtFomSorter::~DtFomSorter() = default;

void DtFomSorter::addFom(const DtString& fileName, const DtString& fomName,
                         const std::vector<DtString>& references) {
  // Only the normal files are looked at: a duplicate added again replaces its own row.
  if (files.count(fileName)) {
    DtVerbose << "Ignored adding a FOM file to sort that was already added " << fileName
              << " Model ID: " << fomName << "\n";
    return;
  }
  auto taken = fomToFile.find(fomName);
  if (taken != fomToFile.end()) {
    DtVerbose << "Added a FOM file to be sorted whose identification is already mapped to "
                 "another file "
              << fileName << " Model ID: " << fomName << " existing file " << taken->second << "\n";
    duplicateFiles[fileName] = Module(fomName, references);
  } else {
    files[fileName] = Module(fomName, references);
    fomToFile[fomName] = fileName;
  }
  mappingValid = false;
}

void DtFomSorter::clear() {
  // The duplicates stay on purpose: they are ranked again by the next mapping.
  rankToFom.clear();
  fomToRank.clear();
  files.clear();
  fomToFile.clear();
  mappingValid = true;
}

void DtFomSorter::getSortedFomFileNames(std::vector<DtString>& fileNames) {
  fileNames.clear();
  mapFomDepedencies();
  // The table is ordered by rank, and equal ranks keep the order in which the ranking met them.
  fileNames.reserve(rankToFom.size());
  for (const auto& row : rankToFom) {
    auto file = fomToFile.find(row.second);
    fileNames.push_back(file == fomToFile.end() ? emptyName : file->second);
  }
}

int DtFomSorter::mapFomDepedency(const DtString& fomName, std::set<DtString>& visited) {
  auto ranked = fomToRank.find(fomName);
  if (ranked != fomToRank.end()) return ranked->second;
  const DtString& fileName = fileNameFromFomName(fomName);
  // A name no file declares has no references; it is not added to the files.
  static const std::vector<DtString> none;
  auto entry = files.find(fileName);
  const std::vector<DtString>& references = entry == files.end() ? none : entry->second.second;

  int rank = 0;
  visited.insert(fomName);
  if (references.empty()) {
    addFomDependencyMapping(0, fomName);
    return 0;
  }
  for (const DtString& reference : references) {
    int dependency = 0;
    auto referenceRank = fomToRank.find(reference);
    if (!fomToFile.count(reference)) {
      DtVerbose << "Unknown dependency " << reference << " referenced in FOM file " << fileName
                << "\n"
                << "FOM sorting may be affected."
                << "\n";
    } else if (referenceRank != fomToRank.end()) {
      dependency = referenceRank->second;
    } else if (visited.count(reference)) {
      // The entry found on the path is the reference itself, so both halves name one module.
      const DtString& onPath = *visited.find(reference);
      DtVerbose << "FOM dependency mapping discarding circular dependency from "
                << fileNameFromFomName(reference) << "(" << reference << ") to "
                << fileNameFromFomName(onPath) << "(" << onPath << ")"
                << "\n";
    } else {
      // Each branch walks with its own copy of the path, so a diamond is no cycle.
      std::set<DtString> path(visited);
      dependency = mapFomDepedency(reference, path);
    }
    if (dependency > rank) rank = dependency;
  }
  addFomDependencyMapping(rank + 1, fomName);
  return rank + 1;
}

void DtFomSorter::mapFomDepedencies() {
  if (mappingValid) return;
  rankToFom.clear();
  fomToRank.clear();
  for (const auto& file : files) {
    const DtString& fomName = file.second.first;
    if (!fomToRank.count(fomName)) {
      std::set<DtString> visited;
      mapFomDepedency(fomName, visited);
    }
  }
  fixDuplicateFomNames();
  mappingValid = true;
}

const DtString& DtFomSorter::fileNameFromFomName(const DtString& fomName) const {
  auto found = fomToFile.find(fomName);
  return found == fomToFile.end() ? emptyName : found->second;
}

const DtString& DtFomSorter::fomNameFromFileName(const DtString& fileName) const {
  auto found = files.find(fileName);
  return found == files.end() ? emptyName : found->second.first;
}

void DtFomSorter::addFomDependencyMapping(int rank, const DtString& fomName) {
  rankToFom.insert(std::make_pair(rank, fomName));
  fomToRank.insert(std::make_pair(fomName, rank));
}

void DtFomSorter::fixDuplicateFomNames() {
  // Duplicates come after every normal module and don't recurse: a duplicate's rank is one more
  // than the highest rank among its known references.
  for (const auto& duplicate : duplicateFiles) {
    DtString newName(duplicate.first);
    makeUniqueFomName(newName);
    const std::vector<DtString>& references = duplicate.second.second;
    if (references.empty()) {
      addFomDependencyMapping(0, newName);
    } else {
      int rank = 0;
      for (const DtString& reference : references) {
        auto ranked = fomToRank.find(reference);
        if (ranked != fomToRank.end() && ranked->second > rank) rank = ranked->second;
      }
      addFomDependencyMapping(rank + 1, newName);
    }
    fomToFile[newName] = duplicate.first;
  }
}

void DtFomSorter::makeUniqueFomName(DtString& fomName) {
  if (fomToFile.count(fomName)) fomName += "###@@@***";
}

}  // namespace KORRti
