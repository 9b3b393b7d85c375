#pragma once

/// The files of the folder "skeletons". @NAME@ stands for the plug-in's name.
namespace Devkit::SkeletonTexts {

extern const char* const kDescriptor;
extern const char* const kLibrary;
extern const char* const kCMakeLists;
extern const char* const kMakefile;

} // namespace Devkit::SkeletonTexts
