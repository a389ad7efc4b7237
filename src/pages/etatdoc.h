// The text side of a report: its markup goes to a temporary file, and beside it an
// index of unbreakable blocks. A report derives from `CEtatDoc` and overrides
// `BuildEtat`; what it writes is told in docs/MARKUP.md.
//
//   class CEtatPlanDoc : public CEtatDoc {
//     void BuildEtat() override {
//       SetEtatTitre(TitrePlan);
//       SetEtatEntete(EntetePlan);
//       ... for each account, while `EnCours()`:
//       EtatPrintf(LignePlan, {compte, designation, FormatFranc(solde)});
//     }
//   };
//
// A report is a stream: its first refusal stays, what is written from then on goes nowhere, and
// `OnNewDocument` returns it at the end.
//
// The length of a report is limited by the disk and by 4 gigabytes of text; nothing of
// it is held in memory. One thread.
#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"
#include "pages/fichiertampon.h"
#include "pages/formatetat.h"
#include "pages/indexetat.h"
#include "pages/pagination.h"
#include "pages/stylepapier.h"

namespace fenlor {

class CEtatDoc : public LecteurBlocs {
 public:
  /// The session outlives the document.
  explicit CEtatDoc(CFenlorApp& app) : App(app), m_texte(app.Magasin), m_index(app.Magasin) {}
  /// The temporary files go with the object.
  ~CEtatDoc() override = default;
  CEtatDoc(const CEtatDoc&) = delete;
  CEtatDoc& operator=(const CEtatDoc&) = delete;

  /// Builds the report anew: makes the two files, clears everything, calls `BuildEtat`.
  /// Refused when there is none to show: by what it was given up for; or the files could not be
  /// made (3109) or written to their end (ErrEtatEcriture). A report that lacks a line is never shown.
  Refus OnNewDocument();

  /// Not given up: what a long walk asks before it goes on.
  bool EnCours() const { return !m_refus; }
  /// There will be no report, for what it tells cannot be had. The first refusal stays.
  void Abandonne(const Refus& refus);
  /// The user does not want it: ErrEtatAbsent, which he knows.
  void Abandonne();

  // What pagination and drawing read.
  u32 NombreBlocs() const { return m_nbBlocs - (m_nbBlocs > 0); }
  u32 NombreLignes() const { return m_compteur.NbLignes(); }
  u32 TailleTexte() const { return m_compteur.Offset(); }
  /// Record `numero`, from 1; all zeros when there is none or it cannot be read.
  BlocEtat LitBloc(u32 numero);
  int LitBlocs(u32 premier, BlocEtat* blocs, u32 nombre) override;
  /// Bytes `debut` to `fin` of the text. What cannot be had is told to
  /// `CFenlorApp::Boite` and comes out as zeros, or as an empty text without memory.
  std::string LitTexte(u32 debut, u32 fin);

  const std::string& Titre() const { return m_titre; }
  const std::string& Entete() const { return m_entete; }
  const std::string& Pied() const { return m_pied; }
  const MesuresEtat& Mesures() const { return m_mesures; }
  bool Paysage() const { return m_paysage; }
  /// The paper that whoever prints it chose, else the practice's; the report does not know.
  StylePapier Style() const;
  void PoseStyle(StylePapier style) { m_style = style; }

  // Printing and preview runs, so that nobody closes a report that is being drawn.
  // Times in milliseconds of any steady clock. A report whose first run has not begun
  // is nobody's: begin it before asking.
  void DebuteImpression() { ++m_impressions; }
  void FinitImpression(u64 maintenant);
  /// No run under way, and more than two seconds since the last one.
  bool PeutFermer(u64 maintenant) const;

 protected:
  /// Writes the report. The default writes one line that says that there is nothing to
  /// print.
  virtual void BuildEtat();

  // At most 512 bytes each. The title is text with markup on one line; header and
  // footer are markup, their heights are the line feeds in them (of the header at
  // least 1) and count from the next write on.
  void SetEtatTitre(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments = {});
  void SetEtatEntete(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments = {});
  void SetEtatPied(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments = {});
  bool SetEtatPaysage(bool valeur);  ///< the former value

  /// Appends markup, one unbreakable block at least; nothing unless the report is `EnCours`.
  void EtatPrintf(const FormatEtat& format, std::initializer_list<ArgumentEtat> arguments = {}) {
    EtatPrintf(format, std::span(arguments.begin(), arguments.size()));
  }
  void EtatPrintf(const FormatEtat& format, std::span<const ArgumentEtat> arguments);
  /// The same with a text that is complete.
  void EcritEtat(std::string_view texte);
  /// A file of the report could not be written, for this reason: ErrEtatEcriture at the end.
  void Echoue(const std::string& raison);

  CFenlorApp& App;

 private:
  bool Cree();
  /// `lignesDuBloc`: the text is known to be one block of so many lines, a heading or not.
  void Ecrit(std::string_view texte, std::optional<u32> lignesDuBloc, bool titre);
  void EchoueSur(const FichierTampon& fichier);

  FichierTampon m_texte;
  FichierTampon m_index;
  CompteurBlocs m_compteur;
  std::vector<BlocEtat> m_fermes;  ///< by one write
  std::string m_travail;
  u32 m_nbBlocs = 0;
  MesuresEtat m_mesures;
  std::string m_titre;
  std::string m_entete;
  std::string m_pied;
  bool m_paysage = false;
  std::optional<StylePapier> m_style;
  Refus m_refus;  ///< why there is no report
  u32 m_impressions = 0;
  u64 m_finImpression = 0;
};

}  // namespace fenlor
