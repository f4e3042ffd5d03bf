#pragma once

// The identifiers of the form's controls among its windows. Whoever drives the wizard from another process
// finds the controls by them, so a number that is in use is never given to another control.
namespace bxvbwiz {

enum ControlId : int {
  kIdCancel = 2,  // IDCANCEL: what Escape presses
  kIdHelp = 9,    // IDHELP
  kIdOk = 100,
  kIdNext = 110,  // + panel
  kIdBack = 120,  // + panel
  kIdBranding = 130,
  kIdLine,
  kIdFrame = 140,  // + panel: the frames themselves

  kIdWelcomeText = 200,
  kIdProjectFileLabel,
  kIdProjectFile,
  kIdBrowse,
  kIdRebuild,
  kIdStatus,

  kIdInformationText = 300,
  kIdApplicationNameLabel,
  kIdApplicationName,
  kIdCompanyNameLabel,
  kIdCompanyName,
  kIdApplicationTypeLabel,
  kIdApplicationType,
  kIdApplicationVersionLabel,
  kIdApplicationVersion,
  kIdExeCaption,
  kIdExeName,

  kIdSummaryText = 400,
  kIdFileView,
  kIdProjectView,
  kIdFiles,
  kIdDependencies,
  kIdProgressText,
  kIdProgress,

  kIdDataAccessText = 500,
  kIdDataAccessFrame,
  kIdDaoJet,
  kIdDaoOdbcDirect,
  kIdRdo,
  kIdAdo,

  kIdReport = 600,
};

}  // namespace bxvbwiz
