" What the filetype plugins of FED files share.

function! fed#Program() abort
  return get(g:, 'rtifed_program', 'rtifed')
endfunction

" The line without its comment and without quoted names, in which parentheses mean nothing.
function! s:Code(lnum) abort
  return substitute(getline(a:lnum), '"[^"]*"\|;.*', '', 'g')
endfunction

function! s:Opened(code) abort
  return count(a:code, '(') - count(a:code, ')')
endfunction

" A fold for each clause of several lines. Relative levels need one line each, so a long file folds fast.
function! fed#Fold(lnum) abort
  let l:opened = s:Opened(s:Code(a:lnum))
  return l:opened > 0 ? 'a' . l:opened : l:opened < 0 ? 's' . -l:opened : '='
endfunction

" The layout of `rtifed fmt`: one step more than the line with the open parenthesis; a closing parenthesis is below it.
function! fed#Indent(lnum) abort
  let l:previous = prevnonblank(a:lnum - 1)
  if l:previous == 0
    return 0
  endif
  let l:closes = getline(a:lnum) =~# '^\s*)'
  let l:code = s:Code(l:previous)
  " Mostly the previous line decides, without a search.
  if l:code !~# '^\s*)' && s:Opened(l:code) == 0 && !l:closes
    return indent(l:previous)
  endif
  call cursor(a:lnum, 1)
  let l:open = searchpair('(', '', ')', 'bnW', 's:Skip()', 0, 500)
  return l:open == 0 ? 0 : indent(l:open) + (l:closes ? 0 : shiftwidth())
endfunction

" Whether the parenthesis at the cursor is in a comment or a quoted name.
function! s:Skip() abort
  let l:before = strpart(getline('.'), 0, col('.') - 1)
  return substitute(l:before, '"[^"]*"', '', 'g') =~# '[;"]'
endfunction

" Runs a command of rtifed on the text of the buffer. Its output, or v:null after an error that has been shown.
function! s:Run(command, extra) abort
  if !executable(fed#Program())
    echohl ErrorMsg | echomsg 'rtifed: there is no program "' . fed#Program() . '"; set g:rtifed_program' | echohl None
    return v:null
  endif
  let l:errors = tempname()
  let l:line = join(map([fed#Program(), a:command, '--stdin-name', expand('%') ==# '' ? 'text' : expand('%'), '-'] + a:extra,
        \ 'shellescape(v:val)')) . ' 2>' . shellescape(l:errors)
  let l:output = systemlist(l:line, getline(1, '$'))
  let l:status = v:shell_error
  let l:messages = filereadable(l:errors) ? readfile(l:errors) : []
  call delete(l:errors)
  for l:message in l:messages
    echohl WarningMsg | echomsg l:message | echohl None
  endfor
  return l:status >= 2 || empty(l:output) ? v:null : l:output
endfunction

" Replaces the text by what `rtifed fmt` or `rtifed fix` makes of it, in one step of undo.
function! fed#Rewrite(command) abort
  let l:lines = s:Run(a:command, [])
  if l:lines is v:null || l:lines ==# getline(1, '$')
    return
  endif
  let l:view = winsaveview()
  call setline(1, l:lines)
  if line('$') > len(l:lines)
    silent execute (len(l:lines) + 1) . ',$delete _'
  endif
  call winrestview(l:view)
endfunction

" Shows the output of a command in a window of its own.
function! fed#Show(command, argument) abort
  let l:lines = s:Run(a:command, a:argument ==# '' ? [] : [a:argument])
  if l:lines is v:null
    return
  endif
  new
  setlocal buftype=nofile bufhidden=wipe noswapfile nowrap
  call setline(1, l:lines)
  setlocal nomodifiable
endfunction
