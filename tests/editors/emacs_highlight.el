;; Writes the coloured parts of the text as LINE:FIRST:END:FACE, in characters from 0.
;; Usage: emacs -Q -batch -L FOLDER-OF-FED-MODE -l THIS --eval '(dump-highlight INPUT OUTPUT)'
(require 'fed-mode)

(defun dump-highlight (input output)
  (find-file input)
  (font-lock-ensure)
  (let ((parts nil) (from (point-min)))
    (while (< from (point-max))
      (let* ((start (save-excursion (goto-char from) (line-beginning-position)))
             (to (min (next-single-property-change from 'face nil (point-max))
                      (save-excursion (goto-char from) (1+ (line-end-position)))))
             (face (get-text-property from 'face)))
        (when face
          (push (format "%d:%d:%d:%s\n" (line-number-at-pos from) (- from start)
                        (- (min to (save-excursion (goto-char from) (line-end-position))) start) face)
                parts))
        (setq from to)))
    (let ((coding-system-for-write 'utf-8-unix))
      (write-region (apply #'concat (nreverse parts)) nil output))))
