#pragma once

#include <memory>
#include <string>
#include <utility>

#include "project/CObjects.h"
#include "project/Sources.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// A form file of the project and the controls that it uses.
class CForm {
 public:
  // `sources` reads the file. All that is given outlives the form.
  CForm(AnalysisContext& context, CObjects& allControls, Sources& sources, std::string projectFolder)
      : sources_(sources), projectFolder_(std::move(projectFolder)), objects_(context, &allControls) {}

  std::string Key;
  Origin asker;  // the line that names the form

  CObjects& Objects() { return objects_; }
  // Stores the name and reads the form file, a relative one in the project's folder. Raises what reading
  // raises.
  void SetName(const std::string& name);
  const std::string& Name() const { return name_; }

 private:
  Sources& sources_;
  std::string projectFolder_;
  CObjects objects_;
  std::string name_;
};

// Forms keyed by their file name.
class CForms : public KeyedCollection<CForm> {
 public:
  // `sources` is told what the forms' files say.
  CForms(AnalysisContext& context, CObjects& allControls, Sources& sources)
      : context_(context), allControls_(allControls), sources_(sources) {}
  // Adds and reads the form of a "Form=" line. Raises what reading raises, and 457 for a second form of that
  // key, naming both lines.
  std::shared_ptr<CForm> Add(const std::string& fileName, const std::string& projectFolder);

 private:
  AnalysisContext& context_;
  CObjects& allControls_;
  Sources& sources_;
};

}  // namespace bxvbwiz
