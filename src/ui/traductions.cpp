#include "ui/traductions.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <string_view>

using namespace std::string_view_literals;

namespace fenlor {

namespace {

struct LigneTraduction {
  std::string_view texte;
  const char* francais;
};

constexpr LigneTraduction lignes[] = {
    {"Print range", "Pages à imprimer"},
    {"Page Set:", "Parité :"},
    {"Double Sided Printing", "Recto verso"},
    {"Off", "Non"},
    {"Long side binding", "Reliure sur le grand côté"},
    {"Short side binding", "Reliure sur le petit côté"},
    {"Printer Properties", "Propriétés de l'imprimante"},
    {"Advanced", "Avancé"},
    {"Job Options", "Options du travail"},
    {"Job Control", "Travail d'impression"},
    {"Banner page at start", "Page de garde au début"},
    {"Banner page at end", "Page de garde à la fin"},
    {"CUPS Banner page", "Page de garde"},
    {"File %1 is not writable.\nPlease choose a different file name.",
     "Le fichier %1 ne peut pas être écrit.\nChoisissez un autre nom."},
    {"%1 already exists.\nDo you want to overwrite it?", "%1 existe déjà.\nFaut-il le remplacer ?"},
    {"%1 is a directory.\nPlease choose a different file name.",
     "%1 est un dossier.\nChoisissez un autre nom."},
    {"Options 'Pages Per Sheet' and 'Page Set' cannot be used together.\nPlease turn one of those options "
     "off.",
     "« Pages par feuille » et « Parité » ne vont pas ensemble.\nRenoncez à l'une des deux."},
    {"Invalid Pages Definition", "Pages mal indiquées"},
    {"%1 does not follow the correct syntax. Please use ',' to separate ranges and pages, '-' to define "
     "ranges "
     "and make sure ranges do not intersect with each other.",
     "« %1 » ne se comprend pas. Séparez les pages par une virgule, donnez les suites avec un tiret, sans "
     "qu'elles se recouvrent."},
    {"Specify pages or ranges separated by commas. Ranges are specified by two numbers separated by a "
     "hyphen. "
     "E.g: 3,5-7,9 prints pages 3, 5, 6, 7 and 9.",
     "Pages séparées par des virgules, suites par un tiret : 3,5-7,9 imprime les pages 3, 5, 6, 7 et 9."},
    {"Page Setup Conflicts", "Mise en page impossible"},
    {"Duplex Settings Conflicts", "Recto verso impossible"},
    {"Advanced Option Conflicts", "Options avancées impossibles"},
    {"There are conflicts in page setup options. Do you want to fix them?",
     "Des options de mise en page se contredisent. Faut-il les corriger ?"},
    {"There are conflicts in duplex settings. Do you want to fix them?",
     "Des options de recto verso se contredisent. Faut-il les corriger ?"},
    {"There are conflicts in some advanced options. Do you want to fix them?",
     "Des options avancées se contredisent. Faut-il les corriger ?"},
    {"There are conflicts in some options. Please fix them.", "Des options se contredisent : corrigez-les."},
};

bool DeLImpression(std::string_view contexte) {
  for (const std::string_view debut : {"QPrint", "QUnixPrint", "QPageSetup", "QCups", "QCUPS"})
    if (contexte.starts_with(debut)) return true;
  return false;
}

}  // namespace

QString Traductions::Complement::translate(const char* contexte, const char* texte, const char*, int) const {
  if (contexte && texte && DeLImpression(contexte))
    for (const LigneTraduction& ligne : lignes)
      if (ligne.texte == texte) return QString::fromUtf8(ligne.francais);
  // One key, one name: what is written on it, as the help says.
  if (contexte && texte && contexte == "QShortcut"sv && texte == "Return"sv) return QStringLiteral("Entrée");
  return {};
}

Traductions::Traductions() {
  if (m_systeme.load(QStringLiteral(":/traductions/qtbase_fr.qm")) ||
      m_systeme.load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&m_systeme);
  QCoreApplication::installTranslator(&m_complement);
}

Traductions::~Traductions() {
  QCoreApplication::removeTranslator(&m_complement);
  QCoreApplication::removeTranslator(&m_systeme);
}

}  // namespace fenlor
