#include "forms/session/sheetproperties.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>
#include <array>

#include "core/textes.h"
#include "core/valeurs.h"
#include "garde/attestation.h"
#include "session/exercices.h"
#include "ui/editeurs.h"
#include "ui/texteqt.h"
#include "ui/voyant.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr std::size_t ConstatsMontres = 4;

/// The row of one file: records, size, a lamp that is lit while it is open.
struct LigneFichier {
  Lecture enregistrements, taille, ouvert;
  Voyant voyant;
};

class CPagePropertiesExercice : public CZNPage {
 public:
  explicit CPagePropertiesExercice(ContexteUi& contexte)
      : CZNPage(contexte, u"Exercice"_s, "PagePropertiesExercice") {
    auto* fichiers = new QWidget;
    Formulaire(*this)
        .Groupe(u"Exercice"_s)
        .Champ(u"Nom :"_s, m_nom, "nom")
        .Champ(u"Dossier :"_s, m_dossier, "dossier")
        .Champ(u"&Emplacement :"_s, m_emplacement, "emplacement")
        .Groupe(u"Options"_s)
        .Champ(u"Période du :"_s, m_debut, "debut")
        .Suite(u"au :"_s, m_fin, "fin")
        .Champ(u"Assujetti à la T.V.A. :"_s, m_tva, "tva")
        .Champ(u"Tenu en EURO :"_s, m_euro, "euro")
        .Champ(u"Clôture :"_s, m_cloture, "cloture")
        .Champ(u"Sceau :"_s, m_sceau, "sceau")
        .Groupe(u"Fichiers"_s)
        .Seul(*fichiers, "fichiers")
        .FinGroupe()
        .Pousse();
    m_sceau.setWordWrap(true);
    m_sceau.setMinimumWidth(fontMetrics().averageCharWidth() * 66);
    m_emplacement.setMinimumWidth(fontMetrics().averageCharWidth() * 34);
    ConstruitFichiers(*fichiers);
  }

  bool Charge() override {
    const ProprietesExercice p = LitProprietes(App());
    const auto ouiNon = [](bool oui) { return fenlor::Texte(oui ? MotOui : MotNon); };
    m_nom.Pose(p.nom);
    m_dossier.Pose(p.nom);
    m_emplacement.setText(QString::fromStdString(p.emplacement));
    m_emplacement.setCursorPosition(0);
    if (p.debut != 0) {
      m_debut.Pose(StrDate(p.debut));
      m_fin.Pose(StrDate(p.fin));
      m_tva.Pose(ouiNon(p.tva));
      m_euro.Pose(ouiNon(p.euro));
      m_cloture.Pose(EstVide(p.cloture) ? ouiNon(false) : p.cloture);
      EstVide(p.cloture) ? m_sceau.Pose(ouiNon(false)) : MontreSceau();
    }
    for (std::size_t i = 0; i < m_lignes.size(); ++i) {
      m_lignes[i].enregistrements.Pose(std::to_string(p.fichiers[i].enregistrements));
      m_lignes[i].taille.Pose(Taille(p.fichiers[i].taille));
      m_lignes[i].ouvert.Pose(ouiNon(p.fichiers[i].ouvert));
      m_lignes[i].voyant.Pose(p.fichiers[i].ouvert ? Voyant::Etat::Allume : Voyant::Etat::Eteint);
    }
    m_total.Pose(Taille(p.total));
    return true;
  }
  bool Enregistre() override { return true; }

 private:
  /// Whether it holds, and what was found first when it does not.
  void MontreSceau() {
    ExamenSceau examen;
    if (!App().Dit(ExamineSceau(App(), examen))) return;
    std::string texte = PhraseSceau(examen);
    for (std::size_t i = 0; i < std::min(ConstatsMontres, examen.constats.size()); ++i)
      texte += "\r\n" + examen.constats[i];
    m_sceau.Pose(texte);
    // What a broken seal tells takes several lines, which the sheet makes room for.
    m_sceau.setMinimumHeight(m_sceau.heightForWidth(m_sceau.minimumWidth()));
  }

  std::string Taille(f64 ko) {
    return ko == 0 ? "0" : FormatMontant(ko, 3, App().Reglages.SeparateurDecimal());
  }

  void ConstruitFichiers(QWidget& zone) {
    auto* grille = new QGridLayout(&zone);
    grille->setContentsMargins(0, 0, 0, 0);
    grille->setHorizontalSpacing(4 * fontMetrics().averageCharWidth());
    const QString titres[] = {u"Enregistrements"_s, u"Taille (Ko)"_s, u"Ouvert"_s};
    for (int i = 0; i < 3; ++i)
      grille->addWidget(new QLabel(titres[i]), 0, i + 1, i < 2 ? Qt::AlignRight : Qt::AlignLeft);
    const auto place = [grille](Lecture& lecture, int ligne, int colonne, const QString& nom) {
      lecture.setObjectName(nom);
      grille->addWidget(&lecture, ligne, colonne, Qt::AlignRight | Qt::AlignVCenter);
    };
    const std::pair<QString, QString> fichiers[] = {{u"Journal :"_s, u"journal"_s},
                                                    {u"Comptes :"_s, u"comptes"_s},
                                                    {u"Rubriques :"_s, u"rubriques"_s},
                                                    {u"Opérations à rapprocher :"_s, u"banque"_s}};
    int rang = 0;
    for (const auto& [libelle, nom] : fichiers) {
      LigneFichier& ligne = m_lignes[static_cast<std::size_t>(rang++)];
      grille->addWidget(new QLabel(libelle), rang, 0);
      place(ligne.enregistrements, rang, 1, nom + u"Rec"_s);
      place(ligne.taille, rang, 2, nom + u"Taille"_s);
      ligne.ouvert.setObjectName(nom + u"Ouvert"_s);
      auto* etat = new QHBoxLayout;
      etat->addWidget(&ligne.voyant);
      etat->addWidget(&ligne.ouvert, 1);
      grille->addLayout(etat, rang, 3);
    }
    grille->addWidget(new QLabel(u"Total :"_s), ++rang, 0);
    place(m_total, rang, 2, u"total"_s);
    grille->setColumnStretch(0, 1);
  }

  Lecture m_nom, m_dossier, m_debut, m_fin, m_tva, m_euro, m_cloture, m_sceau, m_total;
  QLineEdit m_emplacement;
  std::array<LigneFichier, 4> m_lignes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace

CSheetProperties::CSheetProperties(ContexteUi& contexte, QWidget* parent)
    : CZNSheet(contexte, u"Propriétés de l'exercice"_s, "SheetProperties", parent) {
  AjoutePage(new CPagePropertiesExercice(contexte));
  Fini();
  LectureSeule();
  if (!App().Reglages.IsExerciceCloture()) return;
  connect(&AjouteBouton(u"&Attestation..."_s, "imprimante"), &QPushButton::clicked, this, [this] {
    m_attestation = true;
    reject();
  });
}

}  // namespace fenlor
