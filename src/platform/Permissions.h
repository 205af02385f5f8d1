#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// The access to the system that scripts have through Kelvar's classes.
///
/// A process has one set of permissions; everything is allowed until a program that runs scripts
/// installs another. Each operation calls `check` immediately before it accesses the system. Files
/// that the program itself uses, such as the settings and the files named by its own options, are
/// exempt.
///
///     if (const Result<void> may = Permissions::check(Kind::Write, path); !may) return may;
///
/// A refusal is an ordinary failure. In addition, it is raised in the script that called the
/// operation, even if the operation reports failures in another way: see `RefusalScope`.
class KELVAR_EXPORT Permissions {
 public:
  /// Targets of `check`: files and folders for the first two, the path of a program, and the URLs
  /// to open on the desktop and to send requests to.
  enum class Kind { Read, Write, Run, Open, Network };
  /// "read", "write", "run", "open", "network".
  static QString nameOf(Kind kind);
  static std::optional<Kind> kindNamed(const QString& name);

  /// Denies everything of this kind except the places passed to `allow`.
  void close(Kind kind) { rules_[kind].isOpen = false; }
  /// Allows a place: a file, or a folder with everything below it but hidden files; a program by
  /// its path, its folder, or its name if it is on the PATH; a host, or a scheme such as "mailto".
  /// Fails for a program that is not on the PATH.
  Result<void> allow(Kind kind, const QString& place);
  /// Denies a place, even within one that is allowed. Hidden files are included.
  Result<void> deny(Kind kind, const QString& place);
  /// Relative paths start at the working directory; symbolic links are followed.
  bool allows(Kind kind, const QString& target) const;
  /// Whether `deny` names it.
  bool isDenied(Kind kind, const QString& target) const;

  /// Replaces the process's permissions. Call before any script runs.
  static void install(const Permissions& permissions);
  /// Like `check`, but reports nothing if the answer is no.
  static bool isAllowed(Kind kind, const QString& target);
  /// Fails with a message that names the target and the option that allows it. Safe from any
  /// thread.
  static Result<void> check(Kind kind, const QString& target);

 private:
  struct Rule {
    bool isOpen = true;
    QStringList allowed, denied;
  };

  QHash<Kind, Rule> rules_;
};

/// Collects the refusals of one call, so that its caller can raise them. Scopes nest; each thread
/// has its own. A refusal outside any scope is a warning to the user.
class KELVAR_EXPORT RefusalScope {
 public:
  RefusalScope();
  ~RefusalScope();
  RefusalScope(const RefusalScope&) = delete;
  RefusalScope& operator=(const RefusalScope&) = delete;

  /// The first refusal since the scope began.
  const std::optional<QString>& refusal() const { return refusal_; }

 private:
  friend class Permissions;

  RefusalScope* const outer_;
  std::optional<QString> refusal_;
};

}  // namespace kelvar
