mydir=`pwd`
# Obtain the current logged-in user's username through the HOME environment variable
user_from_home=$(basename "${HOME}")
fi
